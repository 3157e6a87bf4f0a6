#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/odbc/diagnostics.h"
#include "dataaccess/odbc/engine.h"
#include "dataaccess/odbc/odbc_api.h"

namespace pradelis::dataaccess::odbc {

/// How a driver lets values be read that did not fit into their bound buffers, or are not bound at all.
struct ReadingTraits {
  bool any_order = false;  ///< columns may be read in any order, and before bound ones
  bool bound = false;      ///< bound columns may be read again
  bool in_block = false;   ///< every row of a block can be read

  /// Whether a value that was cut in its bound buffer can be read in full.
  bool cut_values_readable() const noexcept { return any_order && bound && in_block; }
};

/// One open connection of the driver manager and what is known about it; its statements share it.
class Session {
 public:
  /// An unconnected session of the process's environment. Raises -2147467259 when the driver manager
  /// gives none.
  Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  SQLHDBC handle() const noexcept { return connection_.get(); }
  Engine engine() const noexcept { return engine_; }
  const ReadingTraits& reading() const noexcept { return reading_; }
  /// Only one result can stand open at a time.
  bool one_result() const noexcept { return one_result_; }
  bool lost() const noexcept { return lost_; }
  /// Whether the last failure was due to another open result.
  bool busy() const noexcept { return busy_; }
  /// Asks the driver, not the server, whether it knows the connection to be dead.
  bool known_dead() const noexcept;

  /// Connects with an ODBC string. `seconds` limits how long it may take, 0 does not.
  /// \param secret  the password, which is kept out of every text
  void connect(std::string_view connection_string, std::string_view secret, std::int16_t seconds,
               bool read_only);

  /// Raises the failure of a call on a statement.
  [[noreturn]] void fail(SQLHSTMT statement);
  /// Raises a failure that was read already.
  [[noreturn]] void fail(const Diagnosis& diagnosis);
  /// Raises when a call on a statement failed.
  void check(SQLRETURN result, SQLHSTMT statement) {
    if (!succeeded(result)) fail(statement);
  }

  /// Runs a statement that has no parameters and whose result, if any, is of no interest; false when it
  /// failed.
  bool run_quietly(std::string_view sql) noexcept;
  /// Gives a statement its time-out, in seconds.
  void limit_time(SQLHSTMT statement, std::int16_t seconds) noexcept;

  /// The time-out that the last statement had: one that asks for nothing of its own takes it too, since
  /// some drivers spend a round trip on each change.
  std::int16_t last_time_limit() const noexcept { return last_time_limit_; }

 private:
  void learn();
  std::string info_text(SQLUSMALLINT what) const;

  Handle connection_;
  bool connected_ = false;
  Engine engine_ = Engine::Other;
  ReadingTraits reading_;
  bool one_result_ = false;
  bool lost_ = false;
  bool busy_ = false;
  std::int16_t last_time_limit_ = 0;
  std::string secret_;
};

/// The process's environment handle; null when the driver manager gives none.
SQLHENV environment() noexcept;

}  // namespace pradelis::dataaccess::odbc
