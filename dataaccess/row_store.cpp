#include "dataaccess/row_store.h"

#include <algorithm>
#include <utility>

namespace pradelis::dataaccess {

namespace {
constexpr std::size_t smallest_block = 512;
constexpr std::size_t largest_block = std::size_t{1} << 18;
constexpr std::size_t most_kept_cells = std::size_t{1} << 16;
}  // namespace

void RowStore::swap(RowStore& other) noexcept {
  std::swap(columns_, other.columns_);
  std::swap(rows_, other.rows_);
  cells_.swap(other.cells_);
  blocks_.swap(other.blocks_);
  std::swap(free_, other.free_);
  std::swap(free_size_, other.free_size_);
  std::swap(data_size_, other.data_size_);
}

// Each block is twice the last one; what is larger than a block gets one of its size.
void RowStore::make_room(std::size_t size) {
  const std::size_t next =
      blocks_.empty() ? smallest_block : std::min(blocks_.back().size * 2, largest_block);
  const std::size_t block = std::max(size, next);
  blocks_.push_back({std::make_unique_for_overwrite<char[]>(block), block});
  free_ = blocks_.back().bytes.get();
  free_size_ = block;
}

void RowStore::clear() noexcept {
  if (cells_.size() > most_kept_cells) cells_ = {};
  rows_ = 0;
  data_size_ = 0;
  if (blocks_.empty()) return;
  // The last block is the largest, unless it was made for one large value.
  if (blocks_.back().size > largest_block) blocks_.clear();
  if (blocks_.size() > 1) blocks_.erase(blocks_.begin(), blocks_.end() - 1);
  free_ = blocks_.empty() ? nullptr : blocks_.back().bytes.get();
  free_size_ = blocks_.empty() ? 0 : blocks_.back().size;
}

}  // namespace pradelis::dataaccess
