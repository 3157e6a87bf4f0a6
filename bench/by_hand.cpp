#include "bench/by_hand.h"

#include <stdexcept>

#include "dataaccess/sqlite/functions.h"

namespace pradelis::bench {
namespace {

void check(sqlite3* database, int code) {
  if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database));
}

}  // namespace

Statement::Statement(sqlite3* database, const char* sql) {
  check(database, sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement_, nullptr));
}

Statement& Statement::bind(int index, std::int64_t value) {
  sqlite3_bind_int64(statement_, index, value);
  return *this;
}

Statement& Statement::bind(int index, double value) {
  sqlite3_bind_double(statement_, index, value);
  return *this;
}

Statement& Statement::bind(int index, std::string_view value) {
  sqlite3_bind_text(statement_, index, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
  return *this;
}

Statement& Statement::bind_null(int index) {
  sqlite3_bind_null(statement_, index);
  return *this;
}

bool Statement::step() {
  const int code = sqlite3_step(statement_);
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement_)));
  return false;
}

void Statement::run() {
  while (step()) {
  }
  reset();
}

std::string_view Statement::text(int column) const {
  const unsigned char* bytes = sqlite3_column_text(statement_, column);
  const int size = sqlite3_column_bytes(statement_, column);
  return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

Database::Database(const std::string& path) {
  check(database_,
        sqlite3_open_v2(path.c_str(), &database_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr));
  dataaccess::sqlite::add_functions(database_);  // an index of item needs one
  run("pragma journal_mode=wal; pragma synchronous=normal; pragma busy_timeout=5000");
}

void Database::run(const std::string& sql) {
  check(database_, sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr));
}

}  // namespace pradelis::bench
