#include "dataaccess/odbc/row_readers.h"

#include <algorithm>
#include <array>

#include "dataaccess/odbc/block_reader.h"

namespace pradelis::dataaccess::odbc {
namespace {

/// Reads each row's columns one after the other with calls of their own, in the order in which they
/// stand: what every driver can do, for values of any length.
class ColumnReader : public RowReader {
 public:
  ColumnReader(Session& session, SQLHSTMT statement, const std::vector<ResultColumn>& columns)
      : session_(session), statement_(statement) {
    for (const ResultColumn& column : columns) values_.push_back({column.shape, {}, {}});
  }

  void start() override { read_ = 0; }

  bool fetch() override {
    read_ = 0;
    const SQLRETURN result = SQLFetch(statement_);
    if (result == SQL_NO_DATA) return false;
    session_.check(result, statement_);
    return true;
  }

  Cell cell(std::size_t column) override {
    for (; read_ <= column; ++read_) read(read_);
    return values_[column].cell;
  }

 private:
  struct Value {
    Shape shape;
    std::string text;
    Cell cell;
  };

  void read(std::size_t column) {
    Value& value = values_[column];
    const auto number = static_cast<SQLUSMALLINT>(column + 1);
    if (value.shape == Shape::Text) {
      value.cell = read_text(session_, statement_, number, value.text)
                       ? Cell::of(std::string_view(value.text))
                       : Cell::null();
    } else if (value.shape == Shape::Bytes) {
      value.cell = read_bytes(session_, statement_, number, value.text)
                       ? Cell::of(std::string_view(value.text), CellKind::Bytes)
                       : Cell::null();
    } else {
      value.cell = read_fixed(value.shape, number);
    }
  }

  Cell read_fixed(Shape shape, SQLUSMALLINT number) {
    std::array<std::byte, sizeof(SQL_TIMESTAMP_STRUCT)> data{};
    SQLLEN length = 0;
    session_.check(SQLGetData(statement_, number, c_type_of(shape), data.data(), sizeof data, &length),
                   statement_);
    return length == SQL_NULL_DATA ? Cell::null() : fixed_cell(shape, data.data());
  }

  Session& session_;
  SQLHSTMT statement_;
  std::vector<Value> values_;
  std::size_t read_ = 0;
};

/// The longest declared value for which room in every row of a block is made.
constexpr std::size_t longest_bound = 8000;

bool fits_in_block(const ResultColumn& column) {
  return fixed_size_of(column.shape) != 0 || (column.longest != 0 && column.longest <= longest_bound);
}

}  // namespace

std::unique_ptr<RowReader> make_reader(Session& session, SQLHSTMT statement,
                                       const std::vector<ResultColumn>& columns) {
  const bool bounded = traits_of(session.engine()).sizes_hold && std::ranges::all_of(columns, fits_in_block);
  if (bounded || session.reading().cut_values_readable()) {
    return std::make_unique<BlockReader>(session, statement, columns);
  }
  return std::make_unique<ColumnReader>(session, statement, columns);
}

}  // namespace pradelis::dataaccess::odbc
