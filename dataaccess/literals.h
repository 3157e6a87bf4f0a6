#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/cell.h"
#include "dataaccess/tokens.h"

namespace pradelis::dataaccess {

/// The values of literals of one statement, in order. They point into the statement, or into this
/// object until its next use.
class Literals {
 public:
  /// Empties the list, for literals of `sql`.
  void begin(std::string_view sql) noexcept;
  /// Adds the value of a token of kind Number or Text; a number with the sign before it, if there is
  /// one. False, and nothing is added, for what is no plain decimal number, and for an integer of more
  /// than 64 bits, which each engine takes for something else.
  bool add(TokenKind kind, std::string_view literal);
  void repeat_last(std::size_t times) { values_.insert(values_.end(), times, Cell(values_.back())); }
  /// Forgets all but the first `count` values.
  void shrink(std::size_t count) { values_.resize(count); }

  std::size_t size() const noexcept { return values_.size(); }
  bool empty() const noexcept { return values_.empty(); }
  std::span<const Cell> values() const noexcept { return values_; }

 private:
  std::string_view unquoted(std::string_view literal);

  std::size_t statement_size_ = 0;
  std::vector<Cell> values_;
  std::string unquoted_;  // texts with quotes inside
};

}  // namespace pradelis::dataaccess
