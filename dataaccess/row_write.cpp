#include "dataaccess/row_write.h"

#include "dataaccess/table_plan.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

enum Part : char32_t { Set, Equal, Null, KeyEqual, KeyNull, parts };

}  // namespace

void RowWrite::add(char32_t part, std::size_t index) {
  shape_ += static_cast<char32_t>(index) * parts + part;
}

void RowWrite::set(std::size_t column, const Cell& value) {
  add(Set, column);
  values_.push_back(value);
}

void RowWrite::require(std::size_t column, const Cell& value) {
  add(value.is_null() ? Null : Equal, column);
  if (!value.is_null()) values_.push_back(value);
}

void RowWrite::require_key(std::size_t key, const Cell& value) {
  add(value.is_null() ? KeyNull : KeyEqual, key);
  if (!value.is_null()) values_.push_back(value);
}

std::string statement_of(const RowWrite::Shape& shape, const TablePlan& plan) {
  const auto kind = static_cast<RowWrite::Kind>(shape.front());
  std::string columns, markers, conditions;
  for (const char32_t number : shape.substr(1)) {
    const char32_t part = number % parts;
    const std::size_t index = number / parts;
    const bool of_key = part == KeyEqual || part == KeyNull;
    const std::string& name = of_key ? plan.keys[index].name : plan.names[index];
    if (part == Set) {
      columns.append(columns.empty() ? "" : ", ").append(name);
      if (kind == RowWrite::Kind::Update) columns += " = ?";
      markers += markers.empty() ? "?" : ", ?";
    } else {
      conditions.append(conditions.empty() ? " where " : " and ").append(name);
      conditions += part == Null || part == KeyNull ? " is null" : " = ?";
    }
  }
  switch (kind) {
    case RowWrite::Kind::Update:
      return concat("update ", plan.table, " set ", columns, conditions);
    case RowWrite::Kind::Delete:
      return concat("delete from ", plan.table, conditions);
    default:
      if (columns.empty()) return concat("insert into ", plan.table, plan.default_row);
      return concat("insert into ", plan.table, " (", columns, ") values (", markers, ")");
  }
}

}  // namespace pradelis::dataaccess
