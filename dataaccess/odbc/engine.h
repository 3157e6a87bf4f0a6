#pragma once

#include <cstdint>
#include <string_view>

#include "dataaccess/dialect.h"
#include "dataaccess/odbc/odbc_api.h"

namespace pradelis::dataaccess::odbc {

enum class Engine : std::uint8_t { Other, PostgreSql, SqlServer, Oracle, Sqlite };

/// The engine behind a connection, by the name that its driver gives for it.
Engine engine_named(std::string_view dbms_name) noexcept;

/// What the driver has to know of an engine beyond what ODBC tells.
struct EngineTraits {
  const Dialect* dialect;
  /// The cheapest statement that needs the server to answer.
  std::string_view ping;
  /// Makes the session refuse changes; empty where no statement does.
  std::string_view read_only_session;
  /// Whether no value is longer than its column's declaration says.
  bool sizes_hold = true;
  /// Whether moments are kept to the microsecond; else to the millisecond.
  bool microseconds = false;
  /// What stands after a marker in a prepared statement to give its value the type of the literal that
  /// it stands for, by the type under which it is bound; none where the driver says it to the server.
  std::string_view (*marker_cast)(SQLSMALLINT sql_type) = nullptr;
};

const EngineTraits& traits_of(Engine engine) noexcept;

}  // namespace pradelis::dataaccess::odbc
