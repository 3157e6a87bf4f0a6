#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "dataaccess/dialect.h"
#include "dataaccess/schema/description.h"

/// What creating and keeping the database takes in an engine's own words: all that differs between
/// engines below the statements of the business methods.
namespace pradelis::dataaccess::schema {

struct Engine {
  std::string_view name;  ///< as in `Dialect::engine`
  /// Declaration of a column after its name: type, whether it is the key, whether it refuses null.
  std::string (*declaration)(const Column& column);
  /// Function that gives the upper case of a text in an index, as `upper` does in statements.
  std::string_view upper_case;
  /// Gives the kind ("table", "view" or "index") and the name of everything that the database holds.
  std::string_view catalogue;
  /// Begin a transaction that waits for other writers first, and end it; empty where the engine cannot
  /// take the creation of tables back.
  std::string_view begin, commit, rollback;
  /// Raises the first free identifier by `count` and gives the raised one, atomically.
  std::string (*take_identifiers)(std::int32_t count);
};

extern const Engine sqlite_engine;

/// The engine of this dialect. Raises -2147467259 when there is none.
const Engine& engine_of(const Dialect& dialect);

/// The connection string with which a database that is not there yet is created, on engines that keep
/// it in a file; elsewhere the string itself.
std::string creating_connection_string(const std::string& connection_string);

}  // namespace pradelis::dataaccess::schema
