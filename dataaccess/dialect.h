#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// What each engine calls things, as data: the one place where engines differ in their statements.
namespace pradelis::dataaccess {

/// A function that the suite's statements call `name` and the engine calls `engine_name`.
struct FunctionName {
  std::string_view name;         ///< lower case
  std::string_view engine_name;  ///< what stands in its place
  /// Whether it is renamed in select lists and sort keys too, where its text can name a column.
  bool everywhere = true;
};

/// How an engine keeps a name that is written without quotes.
enum class NameCase : std::uint8_t { AsWritten, Lower, Upper };

struct Dialect {
  std::string_view engine;
  std::span<const FunctionName> functions;
  NameCase name_case = NameCase::AsWritten;
  /// Stands after the table's name to insert a row of defaults.
  std::string_view default_row = " default values";
  /// Limits the rows of a query, with "?" for their number: at its end, or after its first word. Empty where
  /// rows are asked for one by one.
  std::string_view row_limit = {};
  bool limit_after_select = false;
  /// The longest `in ( … )` list whose values are bound; longer ones stay in the text.
  std::size_t longest_list = 2048;
  /// The most parameters that a statement may have; one with more keeps its literals.
  std::size_t most_parameters = 32000;
  /// Whether a union that a condition looks a value up in is read whole each time.
  bool reads_unions_whole = false;
  /// Begin and end a row of queries that share one read (`ReadHold`); none where nothing is gained.
  std::string_view begin_reading = "";
  std::string_view end_reading = "";
};

extern const Dialect sqlite_dialect;
/// SQLite as its ODBC driver gives it: without the embedded driver's functions.
extern const Dialect sqlite_odbc_dialect;
extern const Dialect postgresql_dialect;
extern const Dialect sql_server_dialect;
extern const Dialect oracle_dialect;
/// What most engines understand.
extern const Dialect common_dialect;

/// `sql` in the engine's own words. Works on tokens: quoted texts and names stay as they are.
std::string in_dialect(std::string_view sql, const Dialect& dialect);

/// The name of a column, as the database keeps it, as it stands in a statement: in double quotes only
/// where it has to be.
std::string name_in_statement(std::string_view name, const Dialect& dialect);

}  // namespace pradelis::dataaccess
