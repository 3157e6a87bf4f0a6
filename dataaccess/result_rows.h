#pragma once

#include <cstddef>
#include <memory>
#include <span>

#include "dataaccess/row_store.h"
#include "dataaccess/statement_cache.h"

namespace pradelis::dataaccess {

/// The rows of a statement that was run, read forward: from memory, as far as they have been read off,
/// and then from the statement, which is given back as soon as its last row is read.
class ResultRows {
 public:
  enum class Reading : unsigned char {
    OneByOne,  ///< the current row is the statement's own, the passed ones are forgotten
    InBlocks,  ///< a few rows at a time, kept until they are passed
  };

  /// Takes over a statement that runs. `limit` is the most rows to read, 0 for all.
  void begin(StatementLease statement, Reading reading, std::size_t limit);
  /// Moves to the next row, at first to the first one; false after the last.
  bool next();
  /// The result's columns, known when the first row was asked for.
  const ResultColumnsPtr& columns() const noexcept { return columns_; }
  /// Whether there is a current row.
  bool on_row() const noexcept { return on_row_; }
  /// A cell of the current row. What it points to stays until the position moves.
  Cell cell(std::size_t column) const {
    if (!on_statement_) return store_.cell(position_, column);
    Cell cell;
    statement_->read(column, {&cell, 1});
    return cell;
  }
  /// Reads all rows that are left, and the current one, into memory, and gives the statement back.
  void read_off();
  /// Back to before the first row of those in memory: of all, when they were read off at the beginning.
  void rewind() noexcept;
  /// Rows read so far.
  std::size_t rows_read() const noexcept { return read_; }
  /// Whether the statement still stands on a row.
  bool standing() const noexcept { return static_cast<bool>(statement_); }
  void close() noexcept;
  /// Takes memory that others used before, or hands it on; for use while no rows are held.
  void swap_memory(RowStore& memory) noexcept { store_.swap(memory); }

 private:
  static constexpr std::size_t before_first = static_cast<std::size_t>(-1);

  bool fetch();
  void store_row();
  void read_block();

  StatementLease statement_;
  RowStore store_;
  ResultColumnsPtr columns_;
  std::size_t position_ = before_first;  // in store_
  std::size_t read_ = 0;
  std::size_t limit_ = 0;
  Reading reading_ = Reading::OneByOne;
  bool on_row_ = false;
  bool on_statement_ = false;
};

}  // namespace pradelis::dataaccess
