#include <algorithm>
#include <cstring>

#include "dataaccess/odbc/row_readers.h"
#include "dataaccess/odbc/timestamps.h"
#include "dataaccess/odbc/wide_text.h"

namespace pradelis::dataaccess::odbc {
namespace {

constexpr std::size_t first_piece = 4096;           // in units or bytes
constexpr std::size_t longest_piece = 1024 * 1024;  // where the driver gives no total

/// The room for the next piece: what the driver says is left, else twice as much as before.
std::size_t next_piece(std::size_t piece, SQLLEN told, std::size_t got_bytes, std::size_t unit) {
  if (told == SQL_NO_TOTAL || static_cast<std::size_t>(told) <= got_bytes) {
    return std::min(piece * 2, std::max(piece, longest_piece));
  }
  return (static_cast<std::size_t>(told) - got_bytes) / unit + 1;
}

/// Reads a value piece by piece to the end of `buffer`, which then holds its units and `length` of
/// them. `terminator` units at the end of each piece are not part of it. False for null.
template <class Unit>
bool read_pieces(Session& session, SQLHSTMT statement, SQLUSMALLINT number, SQLSMALLINT c_type,
                 std::size_t terminator, std::vector<Unit>& buffer, std::size_t& length) {
  std::size_t piece = first_piece;
  length = 0;
  for (;;) {
    buffer.resize(length + piece + terminator);
    const std::size_t room = piece * sizeof(Unit);
    SQLLEN told = 0;
    const SQLRETURN result = SQLGetData(statement, number, c_type, buffer.data() + length,
                                        static_cast<SQLLEN>(room + terminator * sizeof(Unit)), &told);
    if (result == SQL_NO_DATA) return true;
    session.check(result, statement);
    if (told == SQL_NULL_DATA) return false;
    const bool complete = told != SQL_NO_TOTAL && static_cast<std::size_t>(told) <= room;
    length += complete ? static_cast<std::size_t>(told) / sizeof(Unit) : piece;
    if (complete) return true;
    piece = next_piece(piece, told, room, sizeof(Unit));
  }
}

}  // namespace

bool read_text(Session& session, SQLHSTMT statement, SQLUSMALLINT number, std::string& utf8) {
  WideText units;
  std::size_t length = 0;
  utf8.clear();
  if (!read_pieces(session, statement, number, SQL_C_WCHAR, 1, units, length)) return false;
  append_utf8(utf8, units.data(), length);
  return true;
}

bool read_bytes(Session& session, SQLHSTMT statement, SQLUSMALLINT number, std::string& bytes) {
  std::vector<char> buffer;
  std::size_t length = 0;
  bytes.clear();
  if (!read_pieces(session, statement, number, SQL_C_BINARY, 0, buffer, length)) return false;
  bytes.assign(buffer.data(), length);
  return true;
}

namespace {

template <class Value>
Value value_at(const std::byte* data) {
  Value value;
  std::memcpy(&value, data, sizeof value);
  return value;
}

}  // namespace

Cell fixed_cell(Shape shape, const std::byte* data) {
  switch (shape) {
    case Shape::Boolean:
      return Cell::of(std::int64_t{value_at<unsigned char>(data) != 0}, CellKind::Boolean);
    case Shape::Integer:
      return Cell::of(std::int64_t{value_at<SQLINTEGER>(data)});
    case Shape::LongInteger:
      return Cell::of(static_cast<std::int64_t>(value_at<SQLBIGINT>(data)));
    case Shape::Real:
      return Cell::of(value_at<double>(data));
    case Shape::Moment:
      return Cell::of(from_timestamp(value_at<SQL_TIMESTAMP_STRUCT>(data)).serial, CellKind::Date);
    case Shape::Time:
      return Cell::of(from_time(value_at<SQL_TIME_STRUCT>(data)).serial, CellKind::Date);
    case Shape::Text:
    case Shape::Bytes:
      break;
  }
  return Cell::null();
}

}  // namespace pradelis::dataaccess::odbc
