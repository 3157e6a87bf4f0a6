#include <exception>
#include <iostream>

#include "command/exit_status.h"
#include "command/options.h"
#include "dataaccess/trace.h"

int main(int count, char** arguments) {
  using namespace pradelis;
  try {
    const command::Options options = command::read_options(count, arguments);
    if (!options.run) return options.status;
    if (!options.trace_file.empty()) dataaccess::set_trace_file(options.trace_file);
    return options.run();
  } catch (const std::exception& failure) {
    std::cerr << "pradelis: " << failure.what() << '\n';
    return command::exit_status::failed;
  }
}
