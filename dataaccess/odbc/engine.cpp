#include "dataaccess/odbc/engine.h"

#include <array>
#include <cstddef>

namespace pradelis::dataaccess::odbc {
namespace {

constexpr EngineTraits other_traits{"select 1", "", false, false};
constexpr EngineTraits postgresql_traits{"select 1", "set session characteristics as transaction read only",
                                         true, true};
constexpr EngineTraits sql_server_traits{"select 1", "", true, false};
constexpr EngineTraits oracle_traits{"select 1 from dual", "", true, false};
constexpr EngineTraits sqlite_traits{"select 1", "pragma query_only = 1", false, false};

}  // namespace

Engine engine_named(std::string_view dbms_name) noexcept {
  const auto begins = [dbms_name](std::string_view name) { return dbms_name.substr(0, name.size()) == name; };
  if (begins("PostgreSQL")) return Engine::PostgreSql;
  if (begins("Microsoft SQL Server")) return Engine::SqlServer;
  if (begins("Oracle")) return Engine::Oracle;
  if (begins("SQLite")) return Engine::Sqlite;
  return Engine::Other;
}

const EngineTraits& traits_of(Engine engine) noexcept {
  switch (engine) {
    case Engine::PostgreSql:
      return postgresql_traits;
    case Engine::SqlServer:
      return sql_server_traits;
    case Engine::Oracle:
      return oracle_traits;
    case Engine::Sqlite:
      return sqlite_traits;
    case Engine::Other:
      break;
  }
  return other_traits;
}

}  // namespace pradelis::dataaccess::odbc
