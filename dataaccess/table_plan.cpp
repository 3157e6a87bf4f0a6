#include "dataaccess/table_plan.h"

#include <algorithm>
#include <array>

#include "dataaccess/dialect.h"
#include "dataaccess/select_reader.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

// Names of the statement's columns as they stand in statements; none when they cannot be told.
std::vector<std::string> column_names(const TableSelect& select, const ResultColumns& columns,
                                      const Dialect& dialect) {
  const auto stars = std::count_if(select.columns.begin(), select.columns.end(),
                                   [](const SelectedColumn& column) { return column.all; });
  if (stars > 1 || columns.size() + static_cast<std::size_t>(stars) < select.columns.size()) return {};
  std::vector<std::string> names;
  names.reserve(columns.size());
  for (const SelectedColumn& selected : select.columns) {
    if (!selected.all) {
      names.push_back(selected.column);
      continue;
    }
    const std::size_t covered = columns.size() + 1 - select.columns.size();
    for (std::size_t i = 0; i < covered; ++i) {
      names.push_back(name_in_statement(columns[names.size()].name, dialect));
    }
  }
  return names.size() == columns.size() ? names : std::vector<std::string>{};
}

constexpr std::size_t most_statements = 50;

}  // namespace

StatementText TablePlan::statement(const RowWrite& write) const {
  auto found = statements_.find(write.shape());
  if (found == statements_.end()) {
    if (statements_.size() == most_statements) statements_.clear();
    std::string made = statement_of(write.shape(), *this);
    const std::size_t hash = StatementText::of(made).hash;
    found = statements_.emplace(write.shape(), Statement{std::move(made), hash}).first;
  }
  return {found->second.text, found->second.hash};
}

TablePlanPtr make_table_plan(const StatementText& text, StatementCache& statements,
                             DriverConnection& connection) {
  auto plan = std::make_shared<TablePlan>();
  plan->text = text.text;
  plan->query = text.text;
  plan->query_hash = text.hash;
  plan->columns = statements.take(text)->columns();
  const auto select = read_table_select(text.text);
  if (!select) return plan;
  plan->names = column_names(*select, *plan->columns, connection.dialect());
  if (plan->names.empty()) return plan;

  plan->table = select->table;
  plan->default_row = connection.dialect().default_row;
  std::string added;
  std::size_t next = plan->columns->size();
  for (const std::string& key : connection.key_columns(select->table)) {
    const std::string name = name_in_statement(key, connection.dialect());
    const auto selected =
        std::find_if(plan->names.begin(), plan->names.end(),
                     [&](const std::string& column) { return equal_ignoring_case(column, name); });
    const bool found = selected != plan->names.end();
    plan->keys.push_back({name, found ? static_cast<std::size_t>(selected - plan->names.begin()) : next++});
    if (!found) added.append(", ").append(select->qualifier).append(".").append(name);
  }
  if (!added.empty()) {
    plan->query.insert(select->from, added + " ");
    plan->query_hash = StatementText::of(plan->query).hash;
  }
  return plan;
}

}  // namespace pradelis::dataaccess
