#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "dataaccess/cell.h"

namespace pradelis::dataaccess {

struct TablePlan;

/// An insert, update or delete of one row of a table: what it does with which columns, from which its
/// text follows, and the values. Rows are written again and again with the same columns: equal shapes
/// have one text.
class RowWrite {
 public:
  enum class Kind : char32_t { Insert, Update, Delete };
  using Shape = std::u32string;

  explicit RowWrite(Kind kind) : shape_(1, static_cast<char32_t>(kind)) {}

  /// Gives a column a value.
  void set(std::size_t column, const Cell& value);
  /// Writes the row only while a column holds a value.
  void require(std::size_t column, const Cell& value);
  /// The same for the `key`th of the plan's keys.
  void require_key(std::size_t key, const Cell& value);

  const Shape& shape() const noexcept { return shape_; }
  /// For the "?" of the text, in order.
  std::span<const Cell> values() const noexcept { return values_; }

 private:
  void add(char32_t part, std::size_t index);

  Shape shape_;  // the kind, then a number for each part: what it is and where its column stands
  std::vector<Cell> values_;
};

/// The statement of this shape, with "?" for the values.
std::string statement_of(const RowWrite::Shape& shape, const TablePlan& plan);

}  // namespace pradelis::dataaccess
