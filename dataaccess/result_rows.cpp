#include "dataaccess/result_rows.h"

namespace pradelis::dataaccess {

namespace {
constexpr std::size_t block_rows = 64;
constexpr std::size_t block_data = std::size_t{1} << 18;  // bytes
}  // namespace

void ResultRows::begin(StatementLease statement, Reading reading, std::size_t limit) {
  close();
  statement_ = std::move(statement);
  reading_ = reading;
  limit_ = limit;
  read_ = 0;
}

bool ResultRows::next() {
  if (!on_statement_ && position_ + 1 < store_.rows()) {
    ++position_;
    return on_row_ = true;
  }
  on_row_ = on_statement_ = false;
  if (!statement_) {
    position_ = store_.rows();
    return false;
  }
  if (read_ > 0) statement_->renew_time();
  store_.clear();
  position_ = before_first;
  if (reading_ == Reading::OneByOne) return on_row_ = on_statement_ = fetch();
  read_block();
  if (store_.rows() == 0) return false;
  position_ = 0;
  return on_row_ = true;
}

bool ResultRows::fetch() {
  const bool found = (limit_ == 0 || read_ < limit_) && statement_->fetch();
  if (read_ == 0) {
    columns_ = statement_->columns();
    store_.set_columns(columns_->size());
  }
  if (found) {
    ++read_;
  } else {
    statement_.give_back();
  }
  return found;
}

void ResultRows::store_row() {
  const std::span<Cell> row = store_.add_row();
  statement_->read(0, row);
  store_.keep(row);
}

void ResultRows::read_block() {
  while (store_.rows() < block_rows && store_.data_size() < block_data && fetch()) store_row();
}

void ResultRows::read_off() {
  if (!statement_) return;
  if (read_ > 0) statement_->renew_time();
  if (on_statement_) {
    store_.clear();
    store_row();
    position_ = 0;
    on_statement_ = false;
  }
  while (fetch()) store_row();
}

void ResultRows::rewind() noexcept {
  position_ = before_first;
  on_row_ = false;
}

void ResultRows::close() noexcept {
  statement_.give_back();
  store_.clear();
  position_ = before_first;
  on_row_ = on_statement_ = false;
}

}  // namespace pradelis::dataaccess
