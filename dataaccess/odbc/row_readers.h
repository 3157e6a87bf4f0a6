#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "dataaccess/cell.h"
#include "dataaccess/odbc/odbc_api.h"
#include "dataaccess/odbc/result_columns.h"
#include "dataaccess/odbc/session.h"

namespace pradelis::dataaccess::odbc {

/// Reads the rows of a statement's results, one result after the other, all of the same columns.
/// Texts, bytes and decimals of its cells stay until the next `fetch` or `cell` of the same column.
class RowReader {
 public:
  virtual ~RowReader() = default;
  /// A new result: nothing of the last one counts.
  virtual void start() = 0;
  /// Moves to the next row; false after the last.
  virtual bool fetch() = 0;
  virtual Cell cell(std::size_t column) = 0;
};

/// The reader that suits the columns and what the driver can do: blocks of rows in bound buffers, or
/// else each row's columns one after the other.
std::unique_ptr<RowReader> make_reader(Session& session, SQLHSTMT statement,
                                       const std::vector<ResultColumn>& columns);

/// Reads a whole text or binary of the present row by its pieces, of which drivers may not tell the
/// number. False for null.
bool read_text(Session& session, SQLHSTMT statement, SQLUSMALLINT number, std::string& utf8);
bool read_bytes(Session& session, SQLHSTMT statement, SQLUSMALLINT number, std::string& bytes);

/// The cell of a value of fixed size, as it lies in a buffer.
Cell fixed_cell(Shape shape, const std::byte* data);

}  // namespace pradelis::dataaccess::odbc
