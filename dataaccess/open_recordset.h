#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/cell.h"
#include "dataaccess/failures.h"
#include "dataaccess/pooled_connection.h"
#include "dataaccess/result_columns.h"
#include "dataaccess/result_rows.h"

namespace pradelis::dataaccess {

/// What all recordsets have in common: the place in their connection's list, and their columns.
class OpenRecordset : public Recordset {
 public:
  /// A closed recordset that belongs to `connection` when it is opened.
  explicit OpenRecordset(std::shared_ptr<PooledConnection> connection) : connection_(std::move(connection)) {}
  ~OpenRecordset() override;

  ObjectState State() const override { return open_ ? ObjectState::Open : ObjectState::Closed; }
  void Close() override;

  std::size_t field_count() const override;
  const std::string& field_name(std::size_t index) const override;
  ColumnType field_type(std::size_t index) const override;
  std::size_t field_index(std::string_view name) const override;

  OpenRecordset* next_of_connection() const noexcept { return next_; }
  /// Reads what is left of the result into memory, so that no statement stands open.
  void read_off() { rows_.read_off(); }
  bool standing() const noexcept { return rows_.standing(); }
  /// Whether the connection has to stay for what may still be asked.
  virtual bool needs_connection() const noexcept { return standing(); }
  /// Lets everything go; the recordset is closed afterwards.
  void end() noexcept;

 protected:
  void open(ResultColumnsPtr columns);
  void begin_rows(StatementLease statement, ResultRows::Reading reading, std::size_t limit);
  void check_open() const {
    if (!open_) raise_closed_recordset();
  }
  const Column& column(std::size_t index) const {
    if (index >= columns_->size()) raise_no_such_column(index);
    return (*columns_)[index];
  }
  PooledConnection& connection() const noexcept { return *connection_; }
  /// The values with their texts copied into this object, where they stay until its next use.
  std::span<const Cell> keep(std::span<const Cell> values);
  /// Type of the first row's value in a column without a declared type.
  void note_first_row();

  ResultRows rows_;

 private:
  [[noreturn]] static void raise_no_such_column(std::size_t index);

  std::shared_ptr<PooledConnection> connection_;
  ResultColumnsPtr columns_;
  OpenRecordset* previous_ = nullptr;
  OpenRecordset* next_ = nullptr;
  bool open_ = false;
  // Which field was asked for after which: readers ask for those of each row in the same order.
  mutable std::array<std::uint8_t, 16> followers_{};
  mutable std::size_t last_asked_ = 0;
  std::vector<ColumnType> first_types_;  // only where a column has no declared type
  std::vector<Cell> kept_values_;
  std::unique_ptr<char[]> kept_data_;
};

}  // namespace pradelis::dataaccess
