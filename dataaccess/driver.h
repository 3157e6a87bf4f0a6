#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/cell.h"
#include "dataaccess/connection.h"
#include "dataaccess/recordset.h"
#include "dataaccess/result_columns.h"

/// What an engine has to provide. Everything above (cursors, literals lifted into bound values, the
/// statement cache, the pool, the trace) is written once on top of these three classes.
///
/// Members raise `Error` with the numbers of `error_number` and the engine's own text as description,
/// without passwords; a driver maps its engine's failures to the numbers in one place. The layer above
/// puts into Portuguese words, before that text, what failed.
namespace pradelis::dataaccess {

struct Dialect;

/// One prepared statement of a driver connection, run any number of times, one run at a time.
/// Does not outlive its connection.
class DriverStatement {
 public:
  virtual ~DriverStatement() = default;

  /// Columns of the result, learned without running the statement; none for a statement that gives no
  /// result. Renewed by the first `fetch` of a run when somebody has changed the table meanwhile.
  virtual const ResultColumnsPtr& columns() = 0;
  /// Gives the value of the `index`th parameter marker (from 0) for the next run. What the cell points
  /// to stays where it is until `reset`.
  virtual void bind(std::size_t index, const Cell& value) = 0;
  /// Runs the statement. `seconds` limits how long this and the fetches that follow may take together;
  /// 0 does not.
  virtual void run(std::int16_t seconds) = 0;
  /// Moves to the next row of the result; false after the last.
  virtual bool fetch() = 0;
  /// Gives the fetches that follow the full time of `run` again: the rows of a stream are asked for
  /// whenever its reader likes.
  virtual void renew_time() noexcept = 0;
  /// Gives the present row's values from column `first` on, as many as `cells` has room for. What they
  /// point to stays until the next `fetch` or `reset`.
  virtual void read(std::size_t first, std::span<Cell> cells) = 0;
  /// Rows inserted, changed or deleted by the last run.
  virtual std::int64_t rows_changed() = 0;
  /// Lets the result and the bound values go; the statement can be run again.
  virtual void reset() noexcept = 0;
};

/// What the layers above have to know of an engine's connections.
struct ConnectionTraits {
  /// The database can go away without a sign: a connection that was not used for a while is asked
  /// (`alive`) before its next use.
  bool remote = false;
  /// Only one result can stand open on a connection: before a statement runs, the rows that are left
  /// of another are read into memory.
  bool one_result = false;
};

class DriverConnection {
 public:
  virtual ~DriverConnection() = default;

  /// Prepares one statement with "?" for its parameters, already in the engine's own dialect.
  virtual std::unique_ptr<DriverStatement> prepare(std::string_view sql) = 0;
  /// Columns of a table's primary key (or what stands in for one), in order; none when it has no key,
  /// as a view. `table` is written as in the statement.
  virtual std::vector<std::string> key_columns(std::string_view table) = 0;
  virtual const Dialect& dialect() const = 0;
  virtual ConnectionTraits traits() const = 0;
  /// Asks the engine whether the connection still works.
  virtual bool alive() noexcept = 0;
  /// Whether a failure has shown that the connection is gone.
  virtual bool lost() const noexcept = 0;
  /// Whether the last failure was due to results that stand open on this very connection: the
  /// statement did nothing, and may be run again when they are read off.
  virtual bool hindered_by_open_results() const noexcept = 0;
  /// Ends what may be left open (a transaction), so that somebody else can use the connection.
  /// Called when no statement is running.
  virtual void tidy() noexcept = 0;
};

struct ConnectionSettings {
  std::string connection_string;
  ConnectMode mode = ConnectMode::Unknown;
  std::int16_t connection_timeout = 15;  ///< seconds; 0 waits without limit
  std::int16_t command_timeout = 30;     ///< seconds; 0 waits without limit
};

/// Used by several threads at once.
class Driver {
 public:
  virtual ~Driver() = default;
  /// Whether a connection string is for this driver.
  virtual bool accepts(std::string_view connection_string) const = 0;
  virtual std::unique_ptr<DriverConnection> connect(const ConnectionSettings& settings) const = 0;
  /// How many unused connections to one database the pool keeps however long they are unused: the
  /// embedded database keeps one, since closing the last one removes its log.
  virtual std::size_t kept_idle() const noexcept = 0;
};

/// Adds a driver, asked before those that are there. To be called before connections are opened.
void register_driver(std::unique_ptr<Driver> driver);

/// The driver for a connection string. Raises -2147467259 when there is none.
const Driver& driver_for(std::string_view connection_string);

}  // namespace pradelis::dataaccess
