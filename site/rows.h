#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "component/crm.h"
#include "site/component_text.h"
#include "site/format.h"
#include "values/convert.h"

namespace pradelis::site {

/// The present row of a query.
class Row {
 public:
  explicit Row(dataaccess::Recordset& rows) : rows_(rows) {}

  Variant value(std::size_t column) const { return rows_.value(column); }
  /// Empty for Null.
  std::string text(std::size_t column) const { return plain_text(rows_.value(column)); }
  /// As typed, of a text that is stored as HTML text: names of categories and salespeople, and the like.
  std::string component_text(std::size_t column) const { return from_component_text(text(column)); }
  /// 0 for Null.
  std::int32_t id(std::size_t column) const {
    const Variant value = rows_.value(column);
    return value.is_null() ? 0 : to_int32(value);
  }
  /// Nothing for Null.
  std::optional<Date> date(std::size_t column) const {
    const Variant value = rows_.value(column);
    return value.is_null() ? std::nullopt : std::optional(to_date(value));
  }
  double number(std::size_t column) const {
    const Variant value = rows_.value(column);
    return value.is_null() ? 0 : to_double(value);
  }

 private:
  dataaccess::Recordset& rows_;
};

/// Runs a query through the component and gives each of its rows to `use`. `limit` is the most rows
/// that are read; 0 for all. `use` must not run another query.
template <class Use>
void each_row(component::CRM& crm, const std::string& sql, std::int32_t limit, Use&& use) {
  crm.Executar(sql, dataaccess::CursorType::Static, dataaccess::LockType::ReadOnly,
               dataaccess::CursorLocation::Server, limit);
  const dataaccess::RecordsetPtr rows = std::exchange(crm.rs, nullptr);
  for (; !rows->Eof(); rows->MoveNext()) use(Row(*rows));
  rows->Close();
}

/// As above, for all rows, of which one at a time is in memory.
template <class Use>
void each_streamed_row(component::CRM& crm, const std::string& sql, Use&& use) {
  crm.Executar(sql, dataaccess::CursorType::ForwardOnly);
  const dataaccess::RecordsetPtr rows = std::exchange(crm.rs, nullptr);
  for (; !rows->Eof(); rows->MoveNext()) use(Row(*rows));
  rows->Close();
}

/// The first column of the first row; Null when there is none.
inline Variant single_value(component::CRM& crm, const std::string& sql) {
  Variant value = Variant::null();
  each_row(crm, sql, 1, [&](const Row& row) { value = row.value(0); });
  return value;
}

/// Changes the row that `sql` selects, if there is one; `fill` sets its columns.
template <class Fill>
void change_row(component::CRM& crm, const std::string& sql, Fill&& fill) {
  crm.Executar(sql, dataaccess::CursorType::Dynamic, dataaccess::LockType::Optimistic);
  const dataaccess::RecordsetPtr row = std::exchange(crm.rs, nullptr);
  if (!row->Eof()) {
    fill(*row);
    row->Update();
  }
  row->Close();
}

/// Appends a row to a table; `fill` sets its columns.
template <class Fill>
void append_row(component::CRM& crm, const std::string& table, Fill&& fill) {
  crm.Executar("select * from " + table, dataaccess::CursorType::Dynamic, dataaccess::LockType::Optimistic);
  const dataaccess::RecordsetPtr row = std::exchange(crm.rs, nullptr);
  row->AddNew();
  fill(*row);
  row->Update();
  row->Close();
}

}  // namespace pradelis::site
