#pragma once

#include <string>

namespace pradelis::command {

struct DemoOptions {
  /// Connection string of an initialised database.
  std::string database;
  int companies = 320;
  int deals = 540;
};

/// Fills a database with a sales team at work, through the component's own methods, so that every page
/// has something to show. Prints the logins with their passwords on standard output, and shows its
/// progress on standard error when that is a terminal. Result: the process's exit status; 1, with a
/// message on standard error, when the database is not initialised or was filled before.
int demo(const DemoOptions& options);

}  // namespace pradelis::command
