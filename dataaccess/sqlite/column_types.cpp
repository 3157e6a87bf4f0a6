#include "dataaccess/sqlite/column_types.h"

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <vector>

#include "values/text.h"

namespace pradelis::dataaccess::sqlite {
namespace {

struct DeclaredType {
  std::string_view name;
  ColumnType type;
  bool day_only = false;
};

constexpr DeclaredType declared_types[] = {
    {"int", ColumnType::Int32},       {"integer", ColumnType::Int32},
    {"mediumint", ColumnType::Int32}, {"smallint", ColumnType::Int16},
    {"int2", ColumnType::Int16},      {"tinyint", ColumnType::UInt8},
    {"bigint", ColumnType::Int64},    {"int8", ColumnType::Int64},
    {"double", ColumnType::Double},   {"double precision", ColumnType::Double},
    {"real", ColumnType::Double},     {"float", ColumnType::Double},
    {"numeric", ColumnType::Double},  {"decimal", ColumnType::Double},
    {"money", ColumnType::Double},    {"bit", ColumnType::Boolean},
    {"boolean", ColumnType::Boolean}, {"bool", ColumnType::Boolean},
    {"datetime", ColumnType::Date},   {"timestamp", ColumnType::Date},
    {"date", ColumnType::Date, true}, {"blob", ColumnType::Bytes},
    {"char", ColumnType::Text},       {"varchar", ColumnType::Text},
    {"nchar", ColumnType::Text},      {"nvarchar", ColumnType::Text},
    {"character", ColumnType::Text},  {"text", ColumnType::Text},
    {"clob", ColumnType::Text},
};

// "VARCHAR(30) " is a "VARCHAR". A type that is not in the table counts as none.
Column column_of(const char* name, const char* declared) {
  Column column{.name = name, .declared = false};
  if (declared == nullptr) return column;
  const std::string_view whole = declared;
  const std::string_view type = trim(whole.substr(0, whole.find('(')));
  for (const DeclaredType& known : declared_types) {
    if (!equal_ignoring_case(type, known.name)) continue;
    column.type = known.type;
    column.day_only = known.day_only;
    column.declared = true;
  }
  return column;
}

}  // namespace

ResultColumnsPtr describe_columns(sqlite3_stmt* statement) {
  std::vector<Column> columns;
  const int count = sqlite3_column_count(statement);
  columns.reserve(static_cast<std::size_t>(count));
  for (int index = 0; index < count; ++index) {
    columns.push_back(
        column_of(sqlite3_column_name(statement, index), sqlite3_column_decltype(statement, index)));
  }
  return std::make_shared<ResultColumns>(std::move(columns));
}

}  // namespace pradelis::dataaccess::sqlite
