#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "dataaccess/connection.h"
#include "tests/support/postgresql.h"
#include "values/variant.h"

namespace pradelis::tests {

/// Password of the maintenance user in every test database.
inline constexpr const char* maintenance_password = "segredo";

/// A folder of its own in the system's place for temporary files, removed at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// A connection beside those of what is tested, to prepare rows and to look at them.
class SideConnection {
 public:
  explicit SideConnection(const std::string& connection_string);

  /// Runs a statement; gives the number of rows changed.
  std::int64_t run(const std::string& sql);
  /// Rows as "a|b" with line breaks between, null as "null".
  std::string rows(const std::string& sql);
  /// The first column of the first row; Empty when the query has no row.
  Variant value(const std::string& sql);

 private:
  dataaccess::ConnectionPtr connection_;
};

/// A freshly initialised database of its own on the engine under test, removed at the end. Its passwords
/// take one round, and what is written is not forced to the disk, so that a test costs about a
/// millisecond on SQLite.
class TemporaryDatabase {
 public:
  TemporaryDatabase();

  const std::string& connection_string() const { return connection_string_; }

  std::int64_t run(const std::string& sql) { return side_.run(sql); }
  std::string rows(const std::string& sql) { return side_.rows(sql); }
  Variant value(const std::string& sql) { return side_.value(sql); }

 private:
  TemporaryFolder folder_;
  std::unique_ptr<PostgresqlDatabase> on_server_;  ///< null on SQLite
  std::string connection_string_;
  SideConnection side_;
};

}  // namespace pradelis::tests
