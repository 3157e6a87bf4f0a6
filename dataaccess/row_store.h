#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <span>
#include <vector>

#include "dataaccess/cell.h"

namespace pradelis::dataaccess {

/// Rows read into memory: cells side by side, their texts and bytes in blocks that never move.
class RowStore {
 public:
  RowStore() = default;
  RowStore(const RowStore&) = delete;
  RowStore& operator=(const RowStore&) = delete;

  void swap(RowStore& other) noexcept;
  /// Number of cells in a row, set before the first one is added.
  void set_columns(std::size_t columns) noexcept { columns_ = columns; }
  /// Empties the store. Keeps some of its memory for its next rows.
  void clear() noexcept;

  /// Room for one more row, to be filled at once and then kept. Stays until the next call.
  std::span<Cell> add_row() {
    const std::size_t begin = rows_++ * columns_;
    if (begin + columns_ > cells_.size()) cells_.resize(std::max(begin + columns_, 2 * cells_.size()));
    return {cells_.data() + begin, columns_};
  }
  /// Copies what the cells of a new row point to.
  void keep(std::span<Cell> row) {
    for (Cell& cell : row) {
      if (cell.has_data()) cell.data = keep(cell.data, cell.size);
    }
  }

  std::size_t rows() const noexcept { return rows_; }
  const Cell& cell(std::size_t row, std::size_t column) const noexcept {
    return cells_[row * columns_ + column];
  }
  /// Bytes of texts and other data held.
  std::size_t data_size() const noexcept { return data_size_; }

 private:
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
  };

  const char* keep(const char* data, std::size_t size) {
    data_size_ += size;
    if (size > free_size_) make_room(size);
    char* kept = free_;
    if (size != 0) std::memcpy(kept, data, size);
    free_ += size;
    free_size_ -= size;
    return kept;
  }
  void make_room(std::size_t size);

  std::size_t columns_ = 0;
  std::size_t rows_ = 0;
  std::vector<Cell> cells_;  // of these rows, and room for more
  std::vector<Block> blocks_;
  char* free_ = nullptr;  // in the last block
  std::size_t free_size_ = 0;
  std::size_t data_size_ = 0;
};

}  // namespace pradelis::dataaccess
