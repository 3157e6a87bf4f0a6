#include "dataaccess/result_columns.h"

#include <algorithm>

#include "values/text.h"

namespace pradelis::dataaccess {

ResultColumns::ResultColumns(std::vector<Column> columns)
    : columns_(std::move(columns)),
      all_declared_(std::all_of(columns_.begin(), columns_.end(),
                                [](const Column& column) { return column.declared; })) {}

std::size_t ResultColumns::find(std::string_view name, std::size_t guess) const noexcept {
  const std::size_t count = columns_.size();
  // A wrong guess may be the second of two columns of one name: the first counts.
  if (guess < count && equal_ignoring_case(columns_[guess].name, name)) return guess;
  for (std::size_t index = 0; index < count; ++index) {
    if (equal_ignoring_case(columns_[index].name, name)) return index;
  }
  return npos;
}

}  // namespace pradelis::dataaccess
