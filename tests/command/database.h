#pragma once

#include <memory>
#include <string>

#include "process.h"
#include "tests/support/postgresql.h"

namespace pradelis::command {

/// Password of the maintenance user in these databases.
inline constexpr const char* maintenance_password = "segredo";

/// A database of its own on the engine under test, without a table until `pradelis init` has run.
class Database {
 public:
  Database();

  const std::string& url() const { return url_; }

  /// Runs `pradelis init` on it.
  Process::Outcome init() const;
  /// The first value of a query, as the component gives it to a script.
  std::string value(const std::string& sql) const;

 private:
  TemporaryFolder folder_;
  std::unique_ptr<tests::PostgresqlDatabase> on_server_;  ///< null on SQLite
  std::string url_;
};

/// A database that `pradelis demo` has filled with a small team's work.
class Demonstration : public Database {
 public:
  Demonstration();

  /// Of all salespeople.
  const std::string& password() const { return password_; }
  /// What `demo` has printed.
  const std::string& logins() const { return logins_; }

 private:
  std::string logins_, password_;
};

}  // namespace pradelis::command
