#include "dataaccess/odbc/parameter.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "dataaccess/odbc/timestamps.h"
#include "values/error.h"

namespace pradelis::dataaccess::odbc {
namespace {

/// Texts up to here are declared with one size, so that servers that keep a plan for each declaration
/// keep one; longer ones are long texts.
constexpr SQLULEN declared_units = 4000;
constexpr SQLULEN declared_bytes = 8000;

/// The declaration under which a null of a column type is sent.
struct Declaration {
  SQLSMALLINT sql_type;
  SQLULEN size;
};

Declaration declaration_of(ColumnType type) {
  switch (type) {
    case ColumnType::Boolean:
      return {SQL_BIT, 1};
    case ColumnType::UInt8:
    case ColumnType::Int16:
    case ColumnType::Int32:
      return {SQL_INTEGER, 10};
    case ColumnType::Int64:
      return {SQL_BIGINT, 19};
    case ColumnType::Double:
      return {SQL_DOUBLE, 15};
    case ColumnType::Date:
      return {SQL_TYPE_TIMESTAMP, 23};
    case ColumnType::Bytes:
      return {SQL_VARBINARY, declared_bytes};
    case ColumnType::Text:
      break;
  }
  return {SQL_WVARCHAR, declared_units};
}

/// Short and long texts, and short and long binaries, are of one kind.
SQLSMALLINT kind_of(SQLSMALLINT sql_type) {
  if (sql_type == SQL_WLONGVARCHAR) return SQL_WVARCHAR;
  return sql_type == SQL_LONGVARBINARY ? SQL_VARBINARY : sql_type;
}

}  // namespace

void Parameter::set(const Cell& value, bool microseconds) {
  switch (value.kind) {
    case CellKind::Null:
      return set_null(value.null_type);
    case CellKind::Boolean:
      fixed_.boolean = value.integer != 0 ? 1 : 0;
      wanted_ = {SQL_C_BIT, SQL_BIT, 1, 0, &fixed_};
      length_ = 1;
      return;
    case CellKind::Integer:
      return set_integer(value.integer);
    case CellKind::Real:
      fixed_.real = value.real;
      wanted_ = {SQL_C_DOUBLE, SQL_DOUBLE, 15, 0, &fixed_};
      length_ = sizeof fixed_.real;
      return;
    case CellKind::Decimal:
      return set_decimal(value.text());
    case CellKind::Date:
      fixed_.moment = to_timestamp(Date{value.real}, microseconds);
      wanted_ = {SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, microseconds ? SQLULEN{26} : SQLULEN{23},
                 static_cast<SQLSMALLINT>(microseconds ? 6 : 3), &fixed_};
      length_ = sizeof fixed_.moment;
      return;
    case CellKind::Day:
      fixed_.day = to_day(Date{value.real});
      wanted_ = {SQL_C_TYPE_DATE, SQL_TYPE_DATE, 10, 0, &fixed_};
      length_ = sizeof fixed_.day;
      return;
    case CellKind::Text:
      return set_text(value.text());
    case CellKind::Bytes:
      return set_bytes(value.text());
  }
}

void Parameter::set_null(ColumnType type) {
  const Declaration declaration = declaration_of(type);
  const SQLSMALLINT c_type = type == ColumnType::Bytes ? SQL_C_BINARY : SQL_C_WCHAR;
  length_ = SQL_NULL_DATA;
  // The kind of value that was bound before serves for a null too, and the server's plan stays.
  wanted_ = bound_.c_type != 0 ? bound_ : Binding{c_type, declaration.sql_type, declaration.size, 0, &fixed_};
}

void Parameter::set_integer(std::int64_t value) {
  if (value >= std::numeric_limits<SQLINTEGER>::min() && value <= std::numeric_limits<SQLINTEGER>::max()) {
    fixed_.integer = static_cast<SQLINTEGER>(value);
    wanted_ = {SQL_C_SLONG, SQL_INTEGER, 10, 0, &fixed_};
    length_ = sizeof fixed_.integer;
  } else {
    fixed_.long_integer = value;
    wanted_ = {SQL_C_SBIGINT, SQL_BIGINT, 19, 0, &fixed_};
    length_ = sizeof fixed_.long_integer;
  }
}

void Parameter::set_decimal(std::string_view value) {
  to_wide(value, text_);
  const std::size_t point = value.find('.');
  const auto digits = static_cast<SQLULEN>(
      std::count_if(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; }));
  const std::size_t scale = point == std::string_view::npos ? 0 : value.size() - point - 1;
  use_wide_text(SQL_DECIMAL, digits, static_cast<SQLSMALLINT>(scale));
}

void Parameter::set_text(std::string_view value) {
  if (!to_wide(value, text_)) raise(error_number::value_does_not_fit, "o texto não é UTF-8 válido");
  if (value.find('\0') != std::string_view::npos) {
    raise(error_number::value_does_not_fit, "o texto contém o caractere U+0000");
  }
  const bool is_long = text_.size() > declared_units;
  use_wide_text(is_long ? SQL_WLONGVARCHAR : SQL_WVARCHAR, is_long ? text_.size() : declared_units, 0);
}

void Parameter::use_wide_text(SQLSMALLINT sql_type, SQLULEN size, SQLSMALLINT digits) {
  length_ = static_cast<SQLLEN>(text_.size() * sizeof(SQLWCHAR));
  if (text_.empty()) text_.reserve(1);  // some drivers take a null address for a null
  wanted_ = {SQL_C_WCHAR, sql_type, size, digits, text_.data()};
}

void Parameter::set_bytes(std::string_view value) {
  length_ = static_cast<SQLLEN>(value.size());
  const bool is_long = value.size() > declared_bytes;
  SQLPOINTER data = value.empty() ? static_cast<SQLPOINTER>(&fixed_) : const_cast<char*>(value.data());
  wanted_ = {SQL_C_BINARY, static_cast<SQLSMALLINT>(is_long ? SQL_LONGVARBINARY : SQL_VARBINARY),
             is_long ? value.size() : declared_bytes, 0, data};
}

bool Parameter::attach(Session& session, SQLHSTMT statement, SQLUSMALLINT number) {
  if (wanted_ == bound_) return false;
  session.check(SQLBindParameter(statement, number, SQL_PARAM_INPUT, wanted_.c_type, wanted_.sql_type,
                                 wanted_.size, wanted_.digits, wanted_.data, 0, &length_),
                statement);
  const bool other_kind = bound_.c_type != 0 && kind_of(bound_.sql_type) != kind_of(wanted_.sql_type);
  bound_ = wanted_;
  return other_kind;
}

}  // namespace pradelis::dataaccess::odbc
