#include "dataaccess/odbc/result_columns.h"

#include <array>

#include "dataaccess/odbc/wide_text.h"

namespace pradelis::dataaccess::odbc {
namespace {

// Types of SQL Server's drivers, from their own header.
constexpr SQLSMALLINT sql_server_time = -154;
constexpr SQLSMALLINT sql_server_moment_with_zone = -155;

struct Description {
  SQLSMALLINT type = 0;
  SQLULEN size = 0;
  SQLSMALLINT digits = 0;
};

/// Whole numbers without a place after the point have the smallest type that holds them; ten digits
/// count as 32 bits, since that is how engines without integers declare one.
ColumnType type_of_decimal(const Description& column) {
  if (column.digits != 0 || column.size == 0 || column.size > 18) return ColumnType::Double;
  return column.size <= 10 ? ColumnType::Int32 : ColumnType::Int64;
}

ColumnType type_of(const Description& column) {
  switch (column.type) {
    case SQL_BIT:
      return ColumnType::Boolean;
    case SQL_TINYINT:
      return ColumnType::UInt8;
    case SQL_SMALLINT:
      return ColumnType::Int16;
    case SQL_INTEGER:
      return ColumnType::Int32;
    case SQL_BIGINT:
      return ColumnType::Int64;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return ColumnType::Double;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return type_of_decimal(column);
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIME:
    case SQL_TYPE_TIMESTAMP:
    case sql_server_time:
    case sql_server_moment_with_zone:
      return ColumnType::Date;
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
      return ColumnType::Bytes;
    default:
      return ColumnType::Text;
  }
}

Shape shape_of(ColumnType type, SQLSMALLINT sql_type) {
  switch (type) {
    case ColumnType::Boolean:
      return Shape::Boolean;
    case ColumnType::UInt8:
    case ColumnType::Int16:
    case ColumnType::Int32:
      return Shape::Integer;
    case ColumnType::Int64:
      return Shape::LongInteger;
    case ColumnType::Double:
      return Shape::Real;
    case ColumnType::Date:
      return sql_type == SQL_TYPE_TIME || sql_type == sql_server_time ? Shape::Time : Shape::Moment;
    case ColumnType::Bytes:
      return Shape::Bytes;
    case ColumnType::Text:
      break;
  }
  return Shape::Text;
}

std::string describe_one(Session& session, SQLHSTMT statement, SQLUSMALLINT number, Description& column) {
  WideText name(128);
  for (;;) {
    SQLSMALLINT length = 0;
    SQLSMALLINT nullable = 0;
    session.check(SQLDescribeColW(statement, number, name.data(), static_cast<SQLSMALLINT>(name.size()),
                                  &length, &column.type, &column.size, &column.digits, &nullable),
                  statement);
    if (static_cast<std::size_t>(length) < name.size()) {
      return utf8_text(name.data(), static_cast<std::size_t>(length));
    }
    name.resize(static_cast<std::size_t>(length) + 1);
  }
}

}  // namespace

ResultShape describe_result(Session& session, SQLHSTMT statement) {
  SQLSMALLINT count = 0;
  session.check(SQLNumResultCols(statement, &count), statement);
  std::vector<Column> columns;
  ResultShape result;
  for (SQLUSMALLINT number = 1; number <= count; ++number) {
    Description description;
    Column column;
    column.name = describe_one(session, statement, number, description);
    column.type = type_of(description);
    column.day_only = description.type == SQL_TYPE_DATE;
    const Shape shape = shape_of(column.type, description.type);
    const std::size_t units = shape == Shape::Text ? 2 : 1;
    columns.push_back(std::move(column));
    result.forms.push_back({shape, static_cast<std::size_t>(description.size) * units});
  }
  result.columns = std::make_shared<const ResultColumns>(std::move(columns));
  return result;
}

SQLSMALLINT c_type_of(Shape shape) noexcept {
  switch (shape) {
    case Shape::Boolean:
      return SQL_C_BIT;
    case Shape::Integer:
      return SQL_C_SLONG;
    case Shape::LongInteger:
      return SQL_C_SBIGINT;
    case Shape::Real:
      return SQL_C_DOUBLE;
    case Shape::Moment:
      return SQL_C_TYPE_TIMESTAMP;
    case Shape::Time:
      return SQL_C_TYPE_TIME;
    case Shape::Bytes:
      return SQL_C_BINARY;
    case Shape::Text:
      break;
  }
  return SQL_C_WCHAR;
}

std::size_t fixed_size_of(Shape shape) noexcept {
  switch (shape) {
    case Shape::Boolean:
      return 1;
    case Shape::Integer:
      return sizeof(SQLINTEGER);
    case Shape::LongInteger:
      return sizeof(SQLBIGINT);
    case Shape::Real:
      return sizeof(double);
    case Shape::Moment:
      return sizeof(SQL_TIMESTAMP_STRUCT);
    case Shape::Time:
      return sizeof(SQL_TIME_STRUCT);
    case Shape::Text:
    case Shape::Bytes:
      break;
  }
  return 0;
}

}  // namespace pradelis::dataaccess::odbc
