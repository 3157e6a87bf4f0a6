#include "dataaccess/row_store.h"

#include <algorithm>
#include <cstring>

namespace pradelis::dataaccess {

namespace {
constexpr std::size_t largest_block = std::size_t{1} << 18;
}

void RowStore::clear() noexcept {
  cells_.clear();
  blocks_.clear();
  free_ = nullptr;
  free_size_ = 0;
  data_size_ = 0;
}

void RowStore::add(const Cell& cell) {
  cells_.push_back(cell);
  if (cell.has_data()) cells_.back().data = keep(cell.data, cell.size);
}

const char* RowStore::keep(const char* data, std::size_t size) {
  if (size == 0) return "";
  data_size_ += size;
  if (size > free_size_) {
    if (size > next_block_ / 4) {  // a block of its own; the rest of the last one goes on being filled
      blocks_.push_back(std::make_unique_for_overwrite<char[]>(size));
      std::memcpy(blocks_.back().get(), data, size);
      return blocks_.back().get();
    }
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(next_block_));
    free_ = blocks_.back().get();
    free_size_ = next_block_;
    next_block_ = std::min(next_block_ * 2, largest_block);
  }
  char* kept = free_;
  std::memcpy(kept, data, size);
  free_ += size;
  free_size_ -= size;
  return kept;
}

}  // namespace pradelis::dataaccess
