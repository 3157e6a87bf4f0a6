#include "dataaccess/result_columns.h"

#include "values/text.h"

namespace pradelis::dataaccess {

ResultColumns::ResultColumns(std::vector<Column> columns) : columns_(std::move(columns)) {
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    all_declared_ = all_declared_ && columns_[index].declared;
    names_differ_ = names_differ_ && first_named(columns_[index].name) == index;
  }
}

std::size_t ResultColumns::first_named(std::string_view name) const noexcept {
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    const std::string& column = columns_[index].name;
    if (column.size() == name.size() && equal_ignoring_case(column, name)) return index;
  }
  return npos;
}

}  // namespace pradelis::dataaccess
