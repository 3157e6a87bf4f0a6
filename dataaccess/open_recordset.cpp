#include "dataaccess/open_recordset.h"

#include <cstring>

#include "dataaccess/column_values.h"
#include "values/text.h"

namespace pradelis::dataaccess {

OpenRecordset::~OpenRecordset() { end(); }

void OpenRecordset::begin_rows(StatementLease statement, ResultRows::Reading reading, std::size_t limit) {
  rows_.swap_memory(connection_->spare_memory_);
  rows_.begin(std::move(statement), reading, limit);
}

void OpenRecordset::open(ResultColumnsPtr columns) {
  columns_ = std::move(columns);
  open_ = true;
  next_ = connection_->recordsets_;
  if (next_ != nullptr) next_->previous_ = this;
  connection_->recordsets_ = this;
}

void OpenRecordset::end() noexcept {
  rows_.close();
  if (!open_) return;
  open_ = false;
  rows_.swap_memory(connection_->spare_memory_);
  (previous_ != nullptr ? previous_->next_ : connection_->recordsets_) = next_;
  if (next_ != nullptr) next_->previous_ = previous_;
  previous_ = next_ = nullptr;
}

void OpenRecordset::Close() {
  check_open();
  end();
}

void OpenRecordset::raise_no_such_column(std::size_t index) {
  raise_no_such_field(concat(static_cast<std::int64_t>(index)));
}

std::size_t OpenRecordset::field_count() const {
  check_open();
  return columns_->size();
}

const std::string& OpenRecordset::field_name(std::size_t index) const {
  check_open();
  return column(index).name;
}

ColumnType OpenRecordset::field_type(std::size_t index) const {
  check_open();
  const Column& asked = column(index);
  return asked.declared || first_types_.empty() ? asked.type : first_types_[index];
}

std::size_t OpenRecordset::field_index(std::string_view name) const {
  check_open();
  std::uint8_t& guess = followers_[last_asked_ % followers_.size()];
  const std::size_t index = columns_->find(name, guess);
  if (index == ResultColumns::npos) raise_no_such_field(name);
  guess = static_cast<std::uint8_t>(index);
  last_asked_ = index;
  return index;
}

void OpenRecordset::note_first_row() {
  if (columns_->all_declared() || !rows_.on_row()) return;
  first_types_.reserve(columns_->size());
  for (std::size_t index = 0; index < columns_->size(); ++index) {
    first_types_.push_back(type_of(rows_.cell(index), (*columns_)[index]));
  }
}

std::span<const Cell> OpenRecordset::keep(std::span<const Cell> values) {
  if (values.empty()) return {};
  kept_values_.assign(values.begin(), values.end());
  std::size_t size = 0;
  for (const Cell& value : values) size += value.has_data() ? value.size : 0;
  if (size == 0) return kept_values_;
  kept_data_ = std::make_unique_for_overwrite<char[]>(size);
  char* free = kept_data_.get();
  for (Cell& value : kept_values_) {
    if (!value.has_data()) continue;
    std::memcpy(free, value.data, value.size);
    value.data = free;
    free += value.size;
  }
  return kept_values_;
}

}  // namespace pradelis::dataaccess
