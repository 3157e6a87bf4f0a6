#include "dataaccess/result_columns.h"

#include "values/text.h"

namespace pradelis::dataaccess {

namespace {
// Most readers write a name as the table does.
bool is_named(const Column& column, std::string_view name) noexcept {
  return column.name == name || equal_ignoring_case(column.name, name);
}
}  // namespace

ResultColumns::ResultColumns(std::vector<Column> columns) : columns_(std::move(columns)) {
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    all_declared_ = all_declared_ && columns_[index].declared;
    names_differ_ = names_differ_ && find(columns_[index].name) == index;
  }
}

std::size_t ResultColumns::find(std::string_view name, std::size_t guess) const noexcept {
  const std::size_t count = columns_.size();
  // A guess could be the second of two columns of one name, of which the first counts.
  if (names_differ_ && guess < count && is_named(columns_[guess], name)) return guess;
  for (std::size_t index = 0; index < count; ++index) {
    if (is_named(columns_[index], name)) return index;
  }
  return npos;
}

}  // namespace pradelis::dataaccess
