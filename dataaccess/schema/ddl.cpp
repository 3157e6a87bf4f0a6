#include "dataaccess/schema/ddl.h"

#include <utility>

#include "values/text.h"

namespace pradelis::dataaccess::schema {
namespace {

std::string declaration(const Column& column, const Engine& engine) {
  return concat(column.name, " ", engine.type_name(column), column.required ? " not null" : "");
}

}  // namespace

std::string create_table(const Table& table, const Engine& engine) {
  std::string sql = concat("create table ", table.name, " (");
  const char* separator = "";
  for (const Column& column : table.columns) {
    sql += concat(separator, declaration(column, engine));
    separator = ", ";
  }
  return sql + ")";
}

std::string add_column(const Table& table, const Column& column, const Engine& engine) {
  Column optional = column;
  optional.required = false;
  return concat("alter table ", table.name, " add ", declaration(optional, engine));
}

std::vector<std::string> create_index(const Table& table, const Index& index, const Engine& engine) {
  std::vector<std::string> statements;
  std::string columns(index.columns);
  if (index.kind == Index::Kind::UpperCase) {
    columns = concat(engine.upper_case, "(", index.columns, ")");
    if (engine.computed_columns) {
      const std::string computed = concat(index.columns, "_maiusculo");
      statements.push_back(concat("alter table ", table.name, " add ", computed, " as ", columns));
      columns = computed;
    }
  }
  std::string sql = concat("create index ", index.name, " on ", table.name, " (", columns, ")");
  if (index.kind == Index::Kind::OnlySet && engine.partial_indexes) {
    sql += concat(" where ", index.columns.substr(0, index.columns.find(',')), " is not null");
  }
  statements.push_back(std::move(sql));
  return statements;
}

std::string create_view(const View& view) { return concat("create view ", view.name, " as ", view.query); }

std::string drop_view(const View& view) { return concat("drop view ", view.name); }

}  // namespace pradelis::dataaccess::schema
