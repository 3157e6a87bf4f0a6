#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/connection.h"
#include "dataaccess/recordset.h"
#include "values/variant.h"

/// What an engine has to provide. Everything above (cursors, literals lifted into bound values, the
/// statement cache, the pool, the trace) is written once on top of these three classes.
/// All members raise `Error` with the numbers of `error_number`; a driver maps its engine's failures
/// to them in one place.
namespace pradelis::dataaccess {

struct Dialect;

struct Column {
  std::string name;
  ColumnType type = ColumnType::Text;
};

/// One prepared statement of a driver connection, run any number of times, one run at a time.
/// Does not outlive its connection.
class DriverStatement {
 public:
  virtual ~DriverStatement() = default;

  /// Columns of the result, learned without running the statement; none for a statement that gives no
  /// result.
  virtual const std::vector<Column>& columns() = 0;
  /// Gives the value of the `index`th parameter marker (from 0) for the next run.
  virtual void bind(std::size_t index, const Variant& value) = 0;
  /// Runs the statement. `seconds` limits how long it may take; 0 does not.
  virtual void run(std::int16_t seconds) = 0;
  /// Moves to the next row of the result; false after the last.
  virtual bool fetch() = 0;
  /// Value of a column in the present row, of the column's type.
  virtual Variant value(std::size_t column) = 0;
  /// Rows inserted, changed or deleted by the last run.
  virtual std::int64_t rows_changed() = 0;
  /// Lets the result go; the statement can be run again.
  virtual void reset() noexcept = 0;
};

class DriverConnection {
 public:
  virtual ~DriverConnection() = default;

  /// Prepares a statement with "?" for its parameters, already in the engine's own dialect.
  virtual std::unique_ptr<DriverStatement> prepare(std::string_view sql) = 0;
  /// Columns of a table's primary key, in order; none when it has no key.
  virtual std::vector<std::string> key_columns(std::string_view table) = 0;
  virtual const Dialect& dialect() const = 0;
  /// Asks the engine whether the connection still works.
  virtual bool alive() noexcept = 0;
  /// Whether a failure has shown that the connection is gone.
  virtual bool lost() const noexcept = 0;
  /// Ends what may be left open (a transaction), so that somebody else can use the connection.
  virtual void tidy() noexcept = 0;
};

struct ConnectionSettings {
  std::string connection_string;
  ConnectMode mode = ConnectMode::Unknown;
  std::int16_t connection_timeout = 15;  ///< seconds; 0 waits without limit
  std::int16_t command_timeout = 30;     ///< seconds; 0 waits without limit
};

class Driver {
 public:
  virtual ~Driver() = default;
  /// Whether a connection string is for this driver.
  virtual bool accepts(std::string_view connection_string) const = 0;
  virtual std::unique_ptr<DriverConnection> connect(const ConnectionSettings& settings) = 0;
};

}  // namespace pradelis::dataaccess
