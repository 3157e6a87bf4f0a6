#include "command/call.h"

#include <iostream>

#include "command/component_host.h"
#include "command/dialogue.h"
#include "command/exit_status.h"
#include "component/thread_state.h"

namespace pradelis::command {
namespace {

bool answer_all(ScriptHost& host) {
  Dialogue dialogue(host);
  std::string line;
  while (std::getline(std::cin, line)) std::cout << dialogue.answer(line) << '\n' << std::flush;
  return dialogue.all_understood();
}

}  // namespace

int call(const CallOptions& options) {
  std::ios::sync_with_stdio(false);
  std::cin.tie(nullptr);
  bool understood = false;
  {
    ComponentHost host(options.database);
    understood = answer_all(host);
  }
  component::reset_thread_state();
  return understood ? exit_status::done : exit_status::not_understood;
}

}  // namespace pradelis::command
