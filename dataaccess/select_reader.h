#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pradelis::dataaccess {

/// A plain column of a select list.
struct SelectedColumn {
  bool all = false;    ///< "*": all columns of the table
  std::string column;  ///< as written, without its table
};

/// A query of one table whose rows can be told apart and written: plain columns, no grouping, no join.
struct TableSelect {
  std::string table;      ///< as written, with its schema and quotes
  std::string qualifier;  ///< what its columns can be prefixed with: the alias, or the table
  std::vector<SelectedColumn> columns;
  std::size_t from = 0;  ///< position of the word "from"
};

/// Reads a query of this kind; nothing for every other statement.
std::optional<TableSelect> read_table_select(std::string_view sql);

/// Whether `name` can stand in a statement as a table's name: plain or quoted parts with points between.
bool is_table_name(std::string_view name);

}  // namespace pradelis::dataaccess
