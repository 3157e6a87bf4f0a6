#include "dataaccess/table_recordset.h"

#include <algorithm>
#include <iterator>

#include "dataaccess/column_values.h"
#include "dataaccess/dialect.h"
#include "dataaccess/failures.h"
#include "dataaccess/trace.h"
#include "values/text.h"

namespace pradelis::dataaccess {

void TableRecordset::prepare(const std::string& sql, std::size_t limit) {
  sql_ = sql;
  limit_ = limit;
  LiveConnection& live = connection().live();
  live.lifter().lift(sql_, live.connection().dialect());
  parameters_ = keep(live.lifter().values());
  plan_ = live.table_plan(live.lifter().text());
  if (!plan_->columns->empty()) open(plan_->columns);
}

void TableRecordset::ask_for_rows() {
  if (asked_) return;
  try {
    connection().live();
    TraceLine trace(sql_);
    begin_rows(connection().run({plan_->query, plan_->query_hash}, parameters_),
               ResultRows::Reading::InBlocks, limit_);
    rows_.next();
    if (!rows_.standing()) trace.set_rows(static_cast<std::int64_t>(rows_.rows_read()));
  } catch (const Error& failure) {
    rows_.close();
    raise_for_statement(failure, sql_);
  }
  asked_ = true;
}

const Variant* TableRecordset::find(const FieldValues& values, std::size_t column) noexcept {
  const auto found = std::find_if(values.begin(), values.end(),
                                  [column](const FieldValue& value) { return value.column == column; });
  return found == values.end() ? nullptr : &found->value;
}

bool TableRecordset::Eof() {
  check_open();
  if (adding_ || at_ == At::AddedRow || at_ == At::DeletedRow) return false;
  if (at_ == At::AfterAddedRow) return true;
  ask_for_rows();
  return !rows_.on_row();
}

bool TableRecordset::Bof() {
  check_open();
  if (adding_ || at_ != At::Query) return false;
  ask_for_rows();
  return rows_.rows_read() == 0;
}

void TableRecordset::check_current_row() {
  check_open();
  if (adding_ || at_ == At::AddedRow) return;
  if (at_ != At::Query) raise_no_current_row();
  ask_for_rows();
  if (!rows_.on_row()) raise_no_current_row();
}

void TableRecordset::MoveNext() {
  if (Eof()) raise_no_current_row();
  save_changes();
  if (at_ == At::AddedRow) {
    at_ = At::AfterAddedRow;
    return;
  }
  ask_for_rows();
  try {
    rows_.next();
  } catch (const Error& failure) {
    raise_for_statement(failure, sql_);
  }
  at_ = At::Query;
  written_.clear();
}

void TableRecordset::MoveFirst() {
  check_open();
  save_changes();
  rows_.close();
  asked_ = false;
  at_ = At::Query;
  written_.clear();
  if (Eof()) raise_no_current_row();
}

std::int32_t TableRecordset::RecordCount() {
  check_open();
  return -1;
}

Variant TableRecordset::value(std::size_t index) {
  check_open();
  const Column& asked = column(index);
  if (const Variant* found = find(set_, index)) return *found;
  if (adding_) return Variant::null();
  check_current_row();
  if (const Variant* found = find(written_, index)) return *found;
  return at_ == At::AddedRow ? Variant::null() : to_variant(rows_.cell(index), asked);
}

void TableRecordset::set_value(std::size_t index, const Variant& value) {
  check_open();
  const Column& changed = column(index);
  check_writable();
  check_current_row();
  Variant converted = fitted(value, changed, plan_->table);
  const auto found =
      std::find_if(set_.begin(), set_.end(), [index](const FieldValue& set) { return set.column == index; });
  if (found != set_.end()) {
    found->value = std::move(converted);
  } else {
    set_.push_back({index, std::move(converted)});
  }
}

void TableRecordset::check_writable() const {
  if (plan_->table.empty()) raise_read_only("a instrução não é uma consulta simples a uma só tabela.");
}

void TableRecordset::AddNew() {
  check_open();
  check_writable();
  save_changes();
  adding_ = true;
}

void TableRecordset::CancelUpdate() {
  check_open();
  set_.clear();
  adding_ = false;
}

void TableRecordset::Update() {
  check_open();
  save_changes();
}

void TableRecordset::save_changes() {
  if (adding_) {
    insert();
  } else if (!set_.empty()) {
    change();
  }
}

void TableRecordset::insert() {
  RowWrite write(RowWrite::Kind::Insert);
  for (const FieldValue& set : set_) write.set(set.column, to_cell(set.value, (*plan_->columns)[set.column]));
  connection().change(plan_->statement(write), write.values());
  adding_ = false;
  at_ = At::AddedRow;
  written_ = std::move(set_);
  set_.clear();
}

// What the database holds in a column of the current row, as far as this recordset knows.
Cell TableRecordset::stored_cell(std::size_t column) const {
  if (column < plan_->columns->size()) {
    if (const Variant* written = find(written_, column)) return to_cell(*written, (*plan_->columns)[column]);
    if (at_ == At::AddedRow) return Cell::null();
  }
  return rows_.cell(column);
}

void TableRecordset::require_key(RowWrite& write) const {
  if (plan_->keys.empty()) {
    raise_read_only(concat("a tabela ", plan_->table, " não tem chave pela qual achar a linha."));
  }
  for (std::size_t index = 0; index < plan_->keys.size(); ++index) {
    const std::size_t column = plan_->keys[index].column;
    const bool known = at_ != At::AddedRow || (column < plan_->columns->size() && find(written_, column));
    if (!known)
      raise_read_only(concat("a chave da linha nova da tabela ", plan_->table, " não é conhecida."));
    write.require_key(index, stored_cell(column));
  }
}

void TableRecordset::change() {
  rows_.read_off();
  RowWrite write(RowWrite::Kind::Update);
  for (const FieldValue& set : set_) write.set(set.column, to_cell(set.value, (*plan_->columns)[set.column]));
  require_key(write);
  for (const FieldValue& set : set_) write.require(set.column, stored_cell(set.column));
  if (connection().change(plan_->statement(write), write.values()) == 0) {
    raise_changed_by_other(plan_->table);
  }
  for (FieldValue& set : set_) {
    std::erase_if(written_, [&set](const FieldValue& old) { return old.column == set.column; });
  }
  written_.insert(written_.end(), std::make_move_iterator(set_.begin()), std::make_move_iterator(set_.end()));
  set_.clear();
}

void TableRecordset::Delete() {
  check_open();
  check_writable();
  if (adding_) return CancelUpdate();
  check_current_row();
  rows_.read_off();
  RowWrite write(RowWrite::Kind::Delete);
  require_key(write);
  if (connection().change(plan_->statement(write), write.values()) == 0) {
    raise_changed_by_other(plan_->table);
  }
  set_.clear();
  written_.clear();
  at_ = At::DeletedRow;
}

}  // namespace pradelis::dataaccess
