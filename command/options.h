#pragma once

#include <functional>
#include <string>

#include "command/call.h"
#include "command/demo.h"
#include "command/init.h"
#include "site/serve.h"

namespace pradelis::command {

/// What the command line asks for.
struct Options {
  /// Runs the chosen subcommand; empty when the process is to end at once with `status`, everything
  /// there was to say having been said.
  std::function<int()> run;
  int status = 0;
  /// File that receives every statement sent to the database; empty for none.
  std::string trace_file;
};

/// Reads the command line. Help goes to standard output, complaints to standard error.
Options read_options(int count, const char* const* arguments);

}  // namespace pradelis::command
