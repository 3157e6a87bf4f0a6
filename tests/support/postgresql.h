#pragma once

#include <string>

namespace pradelis::tests {

/// A database on the PostgreSQL server of scripts/with-postgres, out of those that the process has made
/// and does not use now. It comes as `initialise` makes it, or empty, and goes back when this ends.
class PostgresqlDatabase {
 public:
  enum class Content { Initialised, Empty };

  explicit PostgresqlDatabase(Content content);
  PostgresqlDatabase(const PostgresqlDatabase&) = delete;
  PostgresqlDatabase& operator=(const PostgresqlDatabase&) = delete;
  ~PostgresqlDatabase();

  /// Another one for each of these objects, so that nothing that is kept by it lives on.
  const std::string& connection_string() const { return connection_string_; }

 private:
  Content content_;
  std::string name_;
  std::string connection_string_;
};

}  // namespace pradelis::tests
