#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "dataaccess/odbc/row_readers.h"

namespace pradelis::dataaccess::odbc {

/// Fetches many rows with one call into buffers that are bound once for all runs of a statement.
/// Values that do not fit are read in full when they are asked for, where the driver can do that;
/// `make_reader` gives this reader only where it can, or where the declared sizes hold.
class BlockReader : public RowReader {
 public:
  BlockReader(Session& session, SQLHSTMT statement, const std::vector<ResultColumn>& columns);

  void start() override;
  bool fetch() override;
  Cell cell(std::size_t column) override;

 private:
  struct Buffer {
    Shape shape;
    std::size_t room;             ///< bytes for each row
    std::vector<std::byte> data;  ///< from the allocator, so aligned for any type
    std::vector<SQLLEN> lengths;
    std::string text;  ///< what the last cell of the column points to
  };

  void bind(std::size_t column);
  bool fetch_block();
  Cell cut_cell(std::size_t column);

  Session& session_;
  SQLHSTMT statement_;
  std::vector<Buffer> buffers_;
  std::vector<SQLUSMALLINT> states_;
  std::size_t rows_ = 1;
  SQLULEN fetched_ = 0;
  std::size_t row_ = 0;
  bool ended_ = false;
};

}  // namespace pradelis::dataaccess::odbc
