#include "dataaccess/result_columns.h"

#include "values/text.h"

namespace pradelis::dataaccess {

ResultColumns::ResultColumns(std::vector<Column> columns) : columns_(std::move(columns)) {
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    all_declared_ = all_declared_ && columns_[index].declared;
    names_differ_ = names_differ_ && find(columns_[index].name) == index;
  }
}

std::size_t ResultColumns::find(std::string_view name, std::size_t guess) const noexcept {
  const std::size_t count = columns_.size();
  // A guess could be the second of two columns of one name, of which the first counts.
  if (names_differ_ && guess < count && equal_ignoring_case(columns_[guess].name, name)) return guess;
  for (std::size_t index = 0; index < count; ++index) {
    if (equal_ignoring_case(columns_[index].name, name)) return index;
  }
  return npos;
}

}  // namespace pradelis::dataaccess
