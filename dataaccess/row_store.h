#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "dataaccess/cell.h"

namespace pradelis::dataaccess {

/// Rows read into memory: cells side by side, their texts and bytes in blocks that never move.
class RowStore {
 public:
  /// Number of cells in a row, set before the first one is added.
  void set_columns(std::size_t columns) noexcept { columns_ = columns; }
  void clear() noexcept;
  /// Adds a cell, and a copy of what it points to. The cells of a row are added in order.
  void add(const Cell& cell);

  std::size_t rows() const noexcept { return columns_ == 0 ? 0 : cells_.size() / columns_; }
  const Cell& cell(std::size_t row, std::size_t column) const noexcept {
    return cells_[row * columns_ + column];
  }
  /// Bytes of texts and other data held.
  std::size_t data_size() const noexcept { return data_size_; }

 private:
  const char* keep(const char* data, std::size_t size);

  std::size_t columns_ = 0;
  std::vector<Cell> cells_;
  std::vector<std::unique_ptr<char[]>> blocks_;
  char* free_ = nullptr;  // in the last block
  std::size_t free_size_ = 0;
  std::size_t next_block_ = 512;
  std::size_t data_size_ = 0;
};

}  // namespace pradelis::dataaccess
