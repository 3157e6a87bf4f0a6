#pragma once

#include <string>

namespace pradelis::command {

struct CallOptions {
  /// Connection string of the database; it need not be reachable until a request asks for it.
  std::string database;
};

/// Reads requests from standard input, one on each line, until it ends, and answers each with one line
/// on standard output at once. Result: the process's exit status; 2 when a line was not understood.
int call(const CallOptions& options);

}  // namespace pradelis::command
