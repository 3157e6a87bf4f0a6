#include "dataaccess/odbc/engine.h"

namespace pradelis::dataaccess::odbc {
namespace {

// PostgreSQL's driver names no types when it prepares, so that the server would guess them: "oid = 1.5"
// would be refused, and substring(nome, 1, 3) would take patterns.
std::string_view postgresql_cast(SQLSMALLINT sql_type) {
  switch (sql_type) {
    case SQL_BIT:
      return "::boolean";
    case SQL_INTEGER:
      return "::int4";
    case SQL_BIGINT:
      return "::int8";
    case SQL_DOUBLE:
      return "::float8";
    case SQL_DECIMAL:
      return "::numeric";
    case SQL_TYPE_TIMESTAMP:
      return "::timestamp";
    case SQL_TYPE_DATE:
      return "::date";
    default:
      return "";  // texts take the type of what they are compared with, as quoted literals do
  }
}

constexpr EngineTraits other_traits{&common_dialect, "select 1", "", false, false};
constexpr EngineTraits postgresql_traits{
    &postgresql_dialect, "select 1", "set session characteristics as transaction read only", true, true,
    postgresql_cast};
constexpr EngineTraits sql_server_traits{&sql_server_dialect, "select 1", "", true, false};
constexpr EngineTraits oracle_traits{&oracle_dialect, "select 1 from dual", "", true, false};
constexpr EngineTraits sqlite_traits{&sqlite_odbc_dialect, "select 1", "pragma query_only = 1", false, false};

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
