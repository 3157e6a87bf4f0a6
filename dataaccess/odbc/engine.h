#pragma once

#include <cstdint>
#include <string_view>

namespace pradelis::dataaccess::odbc {

enum class Engine : std::uint8_t { Other, PostgreSql, SqlServer, Oracle, Sqlite };

/// The engine behind a connection, by the name that its driver gives for it.
Engine engine_named(std::string_view dbms_name) noexcept;

/// What the driver has to know of an engine beyond what ODBC tells.
struct EngineTraits {
  /// The cheapest statement that needs the server to answer.
  std::string_view ping;
  /// Makes the session refuse changes; empty where no statement does.
  std::string_view read_only_session;
  /// Whether no value is longer than its column's declaration says.
  bool sizes_hold = true;
  /// Whether moments are kept to the microsecond; else to the millisecond.
  bool microseconds = false;
};

const EngineTraits& traits_of(Engine engine) noexcept;

}  // namespace pradelis::dataaccess::odbc
