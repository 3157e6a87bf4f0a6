#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

/// What a careful programmer writes directly on SQLite's C interface: prepared once, values bound.
namespace pradelis::bench {

class Statement {
 public:
  Statement(sqlite3* database, const char* sql);
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  Statement& bind(int index, std::int64_t value);
  Statement& bind(int index, double value);
  Statement& bind(int index, std::string_view value);
  Statement& bind_null(int index);
  bool step();
  /// Runs to the end and resets.
  void run();
  void reset() { sqlite3_reset(statement_); }

  std::int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
  double real(int column) const { return sqlite3_column_double(statement_, column); }
  std::string_view text(int column) const;
  sqlite3_stmt* get() const { return statement_; }

 private:
  sqlite3_stmt* statement_ = nullptr;
};

/// A connection with the settings that the measured component has: write-ahead log,
/// `synchronous=NORMAL`.
class Database {
 public:
  explicit Database(const std::string& path);
  ~Database() { sqlite3_close(database_); }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  operator sqlite3*() const { return database_; }
  void run(const std::string& sql);

 private:
  sqlite3* database_ = nullptr;
};

}  // namespace pradelis::bench
