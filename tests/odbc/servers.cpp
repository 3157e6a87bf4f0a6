#include "tests/odbc/servers.h"

#include <cstdlib>
#include <filesystem>

#include "dataaccess/odbc/odbc_driver.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

/// The database of this process on the PostgreSQL server.
std::string create_database(const std::string& server) {
  const auto connection = connect(server + "Database=postgres");
  run(*connection, "drop database if exists driver_tests");
  run(*connection, "create database driver_tests");
  return server + "Database=driver_tests;";
}

Server make_postgresql() {
  const std::string server = environment("PRADELIS_POSTGRES");
  if (server.empty()) {
    const std::string reason = environment("PRADELIS_POSTGRES_MISSING");
    return {"PostgreSQL", "", reason.empty() ? "run by scripts/with-postgres" : reason};
  }
  return {"PostgreSQL", create_database(server), ""};
}

Server make_sqlite() {
  const auto file = std::filesystem::temp_directory_path() / "pradelis-odbc-tests.db";
  for (const char* ending : {"", "-wal", "-shm", "-journal"}) std::filesystem::remove(file.string() + ending);
  return {"SQLite", "Driver=SQLite3;SyncPragma=OFF;Database=" + file.string() + ";", ""};
}

}  // namespace

std::vector<Server> servers() {
  static const Server sqlite = make_sqlite();
  return {postgresql(), sqlite};
}

const Server& postgresql() {
  static const Server server = make_postgresql();
  return server;
}

std::unique_ptr<dataaccess::DriverConnection> connect(const std::string& connection_string,
                                                      dataaccess::ConnectMode mode) {
  return dataaccess::odbc::new_driver()->connect({connection_string, mode, 15, 30});
}

std::int64_t run(dataaccess::DriverConnection& connection, const std::string& sql) {
  const auto statement = connection.prepare(sql);
  statement->run(30);
  return statement->rows_changed();
}

std::string first_value(dataaccess::DriverConnection& connection, const std::string& sql) {
  const auto statement = connection.prepare(sql);
  statement->run(30);
  if (!statement->fetch()) return "no row";
  const dataaccess::Cell cell = cell_of(*statement, 0);
  switch (cell.kind) {
    case dataaccess::CellKind::Null:
      return "null";
    case dataaccess::CellKind::Real:
      return to_text(cell.real);
    case dataaccess::CellKind::Date:
    case dataaccess::CellKind::Day:
      return to_text(Date{cell.real});
    case dataaccess::CellKind::Boolean:
    case dataaccess::CellKind::Integer:
      return to_text(cell.integer);
    default:
      return std::string(cell.text());
  }
}

dataaccess::Cell cell_of(dataaccess::DriverStatement& statement, std::size_t column) {
  dataaccess::Cell cell;
  statement.read(column, {&cell, 1});
  return cell;
}

}  // namespace pradelis::tests
