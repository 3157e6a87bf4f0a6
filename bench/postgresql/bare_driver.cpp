#include "bench/postgresql/bare_driver.h"

#include <array>

#include "dataaccess/odbc/session.h"
#include "dataaccess/odbc/wide_text.h"

namespace pradelis::bench::postgresql {

namespace odbc = dataaccess::odbc;

namespace {

constexpr std::size_t block = 100;

template <class Value>
struct Bound {
  std::array<Value, block> values{};
  std::array<SQLLEN, block> sizes{};

  void bind(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type) {
    SQLBindCol(statement, column, type, values.data(), sizeof(Value), sizes.data());
  }
};
using BoundText = Bound<std::array<SQLWCHAR, 256>>;

}  // namespace

struct BareDriver::Columns {
  std::array<Bound<SQLINTEGER>, 4> integers;
  std::array<BoundText, 3> texts;
  Bound<SQL_TIMESTAMP_STRUCT> date;
};

BareDriver::BareDriver(const std::string& connection_string, const std::string& sql)
    : columns_(std::make_unique<Columns>()) {
  session_.connect(connection_string, "", 15, false);
  statement_.allocate(SQL_HANDLE_STMT, session_.handle());
  const SQLHSTMT statement = statement_.get();
  odbc::WideText text = odbc::wide_text(sql);
  session_.check(SQLPrepareW(statement, text.data(), odbc::unit_count(text)), statement);
  SQLUSMALLINT number = 0;
  for (SQLINTEGER& parameter : parameters_) {
    SQLBindParameter(statement, ++number, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 0, 0, &parameter, 0,
                     nullptr);
  }
  SQLSetStmtAttrW(statement, SQL_ATTR_ROW_ARRAY_SIZE, odbc::attribute_value(block), 0);
  SQLSetStmtAttrW(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, 0);
  constexpr std::array<SQLUSMALLINT, 4> integer_columns{1, 4, 5, 6};
  constexpr std::array<SQLUSMALLINT, 3> text_columns{2, 3, 8};
  for (std::size_t i = 0; i < integer_columns.size(); ++i) {
    columns_->integers[i].bind(statement, integer_columns[i], SQL_C_SLONG);
  }
  for (std::size_t i = 0; i < text_columns.size(); ++i) {
    columns_->texts[i].bind(statement, text_columns[i], SQL_C_WCHAR);
  }
  columns_->date.bind(statement, 7, SQL_C_TYPE_TIMESTAMP);
}

BareDriver::~BareDriver() = default;

std::size_t BareDriver::read(std::int32_t first, std::int32_t last) {
  parameters_ = {first, last};
  session_.check(SQLExecute(statement_.get()), statement_.get());
  std::size_t rows = 0;
  while (odbc::succeeded(SQLFetch(statement_.get()))) rows += fetched_;
  SQLFreeStmt(statement_.get(), SQL_CLOSE);
  return rows;
}

}  // namespace pradelis::bench::postgresql
