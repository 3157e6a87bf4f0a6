#pragma once

#include <string>

namespace pradelis::command {

struct InitOptions {
  std::string database;
  /// File whose first line is the maintenance user's password, "-" for standard input; empty: the
  /// terminal is asked.
  std::string password_file;
};

/// Creates the tables of a new database, or brings those of an older one up to date; destroys nothing.
/// Only a new database asks for the maintenance user's password. Says what was done on standard
/// output. Result: the process's exit status.
int init(const InitOptions& options);

}  // namespace pradelis::command
