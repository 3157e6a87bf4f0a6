#include "tests/support/control_server.h"

#include <cstdlib>
#include <stdexcept>

namespace pradelis::tests {

void control_server(const std::string& what) {
  const char* control = std::getenv("PRADELIS_POSTGRES_CONTROL");
  const std::string command =
      std::string(control == nullptr ? "false" : control) + " " + what + " >/dev/null 2>&1";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("the server did not " + what);
}

}  // namespace pradelis::tests
