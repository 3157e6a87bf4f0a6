#include "dataaccess/read_recordset.h"

#include "dataaccess/column_values.h"
#include "dataaccess/failures.h"
#include "dataaccess/row_limit.h"
#include "dataaccess/trace.h"

namespace pradelis::dataaccess {

void ReadRecordset::run(std::string_view sql, std::size_t limit, std::int64_t* rows_changed) {
  LiveConnection& live = connection().live();
  live.lifter().lift(sql, live.connection().dialect());
  std::span<const Cell> values = live.lifter().values();
  if (kind_ == Kind::Stream) {
    sql_ = sql;
    values = keep(values);
  }
  TraceLine trace(sql);
  StatementLease statement = run_limited(live, values, limit);
  const ResultColumnsPtr& columns = statement->columns();
  if (columns->empty()) {
    const std::int64_t changed = statement->rows_changed();
    trace.set_rows(changed);
    if (rows_changed != nullptr) *rows_changed = changed;
    return;
  }
  begin_rows(std::move(statement), ResultRows::Reading::OneByOne, limit);
  if (kind_ == Kind::Snapshot) {
    rows_.read_off();
    trace.set_rows(static_cast<std::int64_t>(rows_.rows_read()));
  }
  rows_.next();
  open(rows_.columns());
  note_first_row();
}

StatementLease ReadRecordset::run_limited(LiveConnection& live, std::span<const Cell> values,
                                          std::size_t limit) {
  const StatementText& text = live.lifter().text();
  const LimitedQuery limited =
      limit == 0 ? LimitedQuery() : with_row_limit(text.text, live.connection().dialect());
  if (limited.text.empty()) return connection().run(text, values);
  std::vector<Cell> all(values.begin(), values.end());
  all.insert(limited.limit_first ? all.begin() : all.end(), Cell::of(static_cast<std::int64_t>(limit)));
  return connection().run(StatementText::of(limited.text), all);
}

bool ReadRecordset::Eof() {
  check_open();
  return !rows_.on_row();
}

bool ReadRecordset::Bof() {
  check_open();
  return rows_.rows_read() == 0;
}

void ReadRecordset::MoveNext() {
  check_open();
  if (!rows_.on_row()) raise_no_current_row();
  try {
    rows_.next();
  } catch (const Error& failure) {
    raise_for_statement(failure, sql_);
  }
}

void ReadRecordset::MoveFirst() {
  check_open();
  if (rows_.rows_read() == 0) raise_no_current_row();
  if (kind_ == Kind::Snapshot) {
    rows_.rewind();
    rows_.next();
  } else if (!rows_.on_row() || rows_.rows_read() > 1) {
    raise_read_only("ele só anda para a frente e já deixou o primeiro registro.");
  }
}

std::int32_t ReadRecordset::RecordCount() {
  check_open();
  return kind_ == Kind::Snapshot ? static_cast<std::int32_t>(rows_.rows_read()) : -1;
}

Variant ReadRecordset::value(std::size_t index) {
  check_open();
  const Column& asked = column(index);
  if (!rows_.on_row()) raise_no_current_row();
  return to_variant(rows_.cell(index), asked);
}

void ReadRecordset::set_value(std::size_t, const Variant&) { refuse_write(); }

void ReadRecordset::refuse_write() const {
  check_open();
  raise_read_only("ele foi aberto somente para leitura.");
}

}  // namespace pradelis::dataaccess
