#pragma once

#include <cstddef>

#include "dataaccess/cell.h"
#include "dataaccess/odbc/odbc_api.h"
#include "dataaccess/odbc/session.h"
#include "dataaccess/odbc/wide_text.h"

namespace pradelis::dataaccess::odbc {

/// The value of one parameter marker and its binding to the statement. Stays at its address while it
/// is bound.
class Parameter {
 public:
  Parameter() noexcept = default;
  Parameter(const Parameter&) = delete;
  Parameter& operator=(const Parameter&) = delete;

  /// Takes the value for the next run; bytes are not copied. Raises -2147217887 for a text that is no
  /// valid UTF-8 or holds a character U+0000, at which drivers would cut it.
  void set(const Cell& value, bool microseconds);
  /// Binds the value to the `number`th marker (from 1), unless it is bound as it must be. True when it
  /// is now of another kind than before: servers that note the kinds of the values when they prepare a
  /// statement must prepare it again.
  bool attach(Session& session, SQLHSTMT statement, SQLUSMALLINT number);

  /// The type under which the present value is bound.
  SQLSMALLINT sql_type() const noexcept { return wanted_.sql_type; }

 private:
  struct Binding {
    SQLSMALLINT c_type = 0;
    SQLSMALLINT sql_type = 0;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLPOINTER data = nullptr;

    friend bool operator==(const Binding&, const Binding&) = default;
  };

  void set_null(ColumnType type);
  void set_integer(std::int64_t value);
  void set_decimal(std::string_view value);
  void set_text(std::string_view value);
  void set_bytes(std::string_view value);
  void use_wide_text(SQLSMALLINT sql_type, SQLULEN size, SQLSMALLINT digits);

  Binding wanted_;
  Binding bound_;
  SQLLEN length_ = 0;  ///< in bytes, or that it is null: read by the driver when the statement runs
  union {
    unsigned char boolean;
    SQLINTEGER integer;
    SQLBIGINT long_integer;
    double real;
    SQL_TIMESTAMP_STRUCT moment;
    SQL_DATE_STRUCT day;
  } fixed_{};
  WideText text_;
};

}  // namespace pradelis::dataaccess::odbc
