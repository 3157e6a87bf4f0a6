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
  /// What stands in a table after a column's name: its type, and that it is the key when it is.
  std::string (*type_name)(const Column& column);
  /// Function that gives the upper case of a text in an index, as `upper` does in statements.
  std::string_view upper_case;
  /// Whether an index on an expression needs a computed column that holds it.
  bool computed_columns = false;
  /// Whether an index can leave rows out by a condition; else those without a key stay out by themselves.
  bool partial_indexes = true;
  /// Gives the kind ("table", "view" or "index") and the name of everything that the database holds.
  std::string_view catalogue;
  /// Begin a transaction that waits for other writers first, and end it; empty where the engine cannot
  /// take the creation of tables back.
  std::string_view begin = {}, commit = {}, rollback = {};
  /// Makes a transaction wait for others that create, where beginning it does not.
  std::string_view wait = {};
  /// Gives why the database is not fit to hold the tables, or an empty text or null when it is; empty
  /// where every database is.
  std::string_view objection = {};
  /// What is created before the tables.
  std::string_view preparation = {};
  /// Keeps the session's writes from waiting for the disk, for data that can be made again; empty where
  /// no statement does.
  std::string_view unforced_writes = {};
  /// Raises the first free identifier by `count` and gives the raised one, atomically. Null where a
  /// statement that changes rows gives none.
  std::string (*take_identifiers)(std::int32_t count);
};

extern const Engine sqlite_engine;
extern const Engine sqlite_odbc_engine;
extern const Engine postgresql_engine;
extern const Engine sql_server_engine;
extern const Engine oracle_engine;

/// The engine of this dialect. Raises -2147467259 when there is none.
const Engine& engine_of(const Dialect& dialect);

/// The connection string with which a database that is not there yet is created, on engines that keep
/// it in a file; elsewhere the string itself.
std::string creating_connection_string(const std::string& connection_string);

}  // namespace pradelis::dataaccess::schema
