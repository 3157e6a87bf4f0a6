#include "dataaccess/odbc/block_reader.h"

#include <algorithm>

#include "dataaccess/odbc/wide_text.h"
#include "values/error.h"

namespace pradelis::dataaccess::odbc {
namespace {

constexpr std::size_t block_bytes = 32 * 1024;
constexpr std::size_t most_rows = 128;
/// Room for values that can be read in full afterwards, in units or bytes: most fit.
constexpr std::size_t usual_length = 256;

std::size_t room_for(const ResultColumn& column, const ReadingTraits& reading) {
  if (const std::size_t size = fixed_size_of(column.shape)) return size;
  std::size_t length = column.longest;
  if (reading.cut_values_readable()) length = length == 0 ? usual_length : std::min(length, usual_length);
  return column.shape == Shape::Text ? (length + 1) * sizeof(SQLWCHAR) : std::max(length, std::size_t{1});
}

}  // namespace

BlockReader::BlockReader(Session& session, SQLHSTMT statement, const std::vector<ResultColumn>& columns)
    : session_(session), statement_(statement) {
  std::size_t row_bytes = 0;
  for (const ResultColumn& column : columns) {
    buffers_.push_back({column.shape, room_for(column, session.reading()), {}, {}, {}});
    row_bytes += buffers_.back().room + sizeof(SQLLEN);
  }
  rows_ = std::clamp(block_bytes / row_bytes, std::size_t{1}, most_rows);
  states_.resize(rows_);
  SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, attribute_value(rows_), 0);
  SQLSetStmtAttrW(statement, SQL_ATTR_ROW_STATUS_PTR, states_.data(), 0);
  SQLSetStmtAttrW(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, 0);
  for (std::size_t i = 0; i < buffers_.size(); ++i) bind(i);
}

void BlockReader::bind(std::size_t column) {
  Buffer& buffer = buffers_[column];
  buffer.data.resize(buffer.room * rows_);
  buffer.lengths.resize(rows_);
  session_.check(SQLBindCol(statement_, static_cast<SQLUSMALLINT>(column + 1), c_type_of(buffer.shape),
                            buffer.data.data(), static_cast<SQLLEN>(buffer.room), buffer.lengths.data()),
                 statement_);
}

void BlockReader::start() {
  fetched_ = 0;
  row_ = 0;
  ended_ = false;
}

bool BlockReader::fetch() {
  if (row_ + 1 < fetched_) {
    ++row_;
  } else if (!fetch_block()) {
    return false;
  }
  if (states_[row_] == SQL_ROW_ERROR) session_.fail(statement_);
  return true;
}

bool BlockReader::fetch_block() {
  // A block that was not filled was the last: asking for another may cost a round trip.
  if (ended_) return false;
  fetched_ = 0;
  row_ = 0;
  const SQLRETURN result = SQLFetch(statement_);
  if (result != SQL_NO_DATA) session_.check(result, statement_);
  ended_ = result == SQL_NO_DATA || fetched_ < rows_;
  return result != SQL_NO_DATA && fetched_ > 0;
}

Cell BlockReader::cell(std::size_t column) {
  Buffer& buffer = buffers_[column];
  const SQLLEN length = buffer.lengths[row_];
  if (length == SQL_NULL_DATA) return Cell::null();
  const std::byte* data = buffer.data.data() + row_ * buffer.room;
  if (fixed_size_of(buffer.shape) != 0) return fixed_cell(buffer.shape, data);
  const bool is_text = buffer.shape == Shape::Text;
  const std::size_t room = is_text ? buffer.room - sizeof(SQLWCHAR) : buffer.room;
  if (length == SQL_NO_TOTAL || static_cast<std::size_t>(length) > room) return cut_cell(column);
  const auto bytes = static_cast<std::size_t>(length);
  if (!is_text) return Cell::of({reinterpret_cast<const char*>(data), bytes}, CellKind::Bytes);
  buffer.text.clear();
  append_utf8(buffer.text, reinterpret_cast<const SQLWCHAR*>(data), bytes / sizeof(SQLWCHAR));
  return Cell::of(std::string_view(buffer.text));
}

Cell BlockReader::cut_cell(std::size_t column) {
  Buffer& buffer = buffers_[column];
  if (!session_.reading().cut_values_readable()) {
    raise(error_number::database_failed, "um valor é mais longo do que a sua coluna declara");
  }
  session_.check(
      SQLSetPos(statement_, static_cast<SQLSETPOSIROW>(row_ + 1), SQL_POSITION, SQL_LOCK_NO_CHANGE),
      statement_);
  const auto number = static_cast<SQLUSMALLINT>(column + 1);
  if (buffer.shape == Shape::Text) {
    read_text(session_, statement_, number, buffer.text);
    return Cell::of(std::string_view(buffer.text));
  }
  read_bytes(session_, statement_, number, buffer.text);
  return Cell::of(std::string_view(buffer.text), CellKind::Bytes);
}

}  // namespace pradelis::dataaccess::odbc
