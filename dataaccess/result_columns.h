#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/recordset.h"

namespace pradelis::dataaccess {

struct Column {
  std::string name;
  ColumnType type = ColumnType::Text;
  /// False where the engine knows no type beforehand (SQLite's expressions): then each value has the
  /// type of its cell, and the field that of the first row's.
  bool declared = true;
  /// A date column that holds no time of day: values for it are cells of kind Day.
  bool day_only = false;
};

/// The columns of a result. They never change, so that all recordsets on one prepared statement share
/// them.
class ResultColumns {
 public:
  static constexpr std::size_t npos = static_cast<std::size_t>(-1);

  ResultColumns() = default;
  explicit ResultColumns(std::vector<Column> columns);

  std::size_t size() const noexcept { return columns_.size(); }
  bool empty() const noexcept { return columns_.empty(); }
  /// Whether the engine knows every column's type.
  bool all_declared() const noexcept { return all_declared_; }
  const Column& operator[](std::size_t index) const noexcept { return columns_[index]; }
  /// Position of the first column of this name, whatever its case; npos when there is none. Looks at
  /// `guess` first: readers ask for the columns of each row in the same order.
  std::size_t find(std::string_view name, std::size_t guess = 0) const noexcept {
    // A guess could be the second of two columns of one name, of which the first counts.
    if (names_differ_ && guess < columns_.size() && columns_[guess].name == name) return guess;
    return first_named(name);
  }

 private:
  std::size_t first_named(std::string_view name) const noexcept;

  std::vector<Column> columns_;
  bool all_declared_ = true;
  bool names_differ_ = true;
};
using ResultColumnsPtr = std::shared_ptr<const ResultColumns>;

}  // namespace pradelis::dataaccess
