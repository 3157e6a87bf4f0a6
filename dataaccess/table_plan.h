#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/result_columns.h"
#include "dataaccess/row_write.h"
#include "dataaccess/statement_cache.h"

namespace pradelis::dataaccess {

/// How the rows of an updatable recordset are read, told apart and written: all that can be known
/// without running its statement, worked out once for each text of statement.
struct TablePlan {
  struct Key {
    std::string name;        ///< as it stands in a statement
    std::size_t column = 0;  ///< its position in the query's result
  };

  std::string text;   ///< the lifted statement
  std::string query;  ///< the same, with the key's columns added where it lacks them
  std::size_t query_hash = 0;
  ResultColumnsPtr columns;        ///< those that the statement selects itself
  std::string table;               ///< as it stands in a statement; empty where rows cannot be written
  std::vector<std::string> names;  ///< of the columns, as they stand in a statement
  std::vector<Key> keys;           ///< none where rows can be added only
  std::string_view default_row;    ///< of the engine's dialect

  /// The text of a write's statement, made once for its shape. Stays until another one is asked for.
  StatementText statement(const RowWrite& write) const;

 private:
  struct Statement {
    std::string text;
    std::size_t hash = 0;
  };
  mutable std::map<RowWrite::Shape, Statement> statements_;
};
using TablePlanPtr = std::shared_ptr<const TablePlan>;

/// The plan for a lifted statement. Checks the statement by preparing it.
TablePlanPtr make_table_plan(const StatementText& text, StatementCache& statements,
                             DriverConnection& connection);

}  // namespace pradelis::dataaccess
