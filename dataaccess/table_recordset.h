#pragma once

#include <optional>
#include <string>
#include <vector>

#include "dataaccess/open_recordset.h"
#include "dataaccess/table_plan.h"

namespace pradelis::dataaccess {

/// An updatable recordset (optimistic lock). Opening it only checks the statement; the query runs when
/// a row is asked for. Where the statement is no plain query of one table, it can be read only.
/// Moving, and a further `AddNew`, save what was set, as `Update` does; `Close` forgets it.
class TableRecordset final : public OpenRecordset {
 public:
  using OpenRecordset::OpenRecordset;

  bool needs_connection() const noexcept override { return true; }

  /// Checks the statement and learns its columns. `limit` is the most rows to read, 0 for all.
  void prepare(const std::string& sql, std::size_t limit);

  bool Eof() override;
  bool Bof() override;
  void MoveNext() override;
  void MoveFirst() override;
  std::int32_t RecordCount() override;
  void AddNew() override;
  void Update() override;
  void CancelUpdate() override;
  void Delete() override;
  Variant value(std::size_t index) override;
  void set_value(std::size_t index, const Variant& value) override;

 private:
  /// Where the position is, unless a new row is being added.
  enum class At : unsigned char {
    Query,     ///< on the query's current row, or after its last
    AddedRow,  ///< on a row that was added here
    AfterAddedRow,
    DeletedRow,
  };
  struct FieldValue {
    std::size_t column;
    Variant value;
  };
  using FieldValues = std::vector<FieldValue>;

  static const Variant* find(const FieldValues& values, std::size_t column) noexcept;

  void ask_for_rows();
  void check_current_row();
  void check_writable() const;
  void insert();
  void change();
  void save_changes();
  Cell stored_cell(std::size_t column) const;
  void require_key(RowWrite& write) const;

  std::string sql_;
  std::span<const Cell> parameters_;  // kept in this object
  TablePlanPtr plan_;
  std::size_t limit_ = 0;
  bool asked_ = false;   // the query has run
  bool adding_ = false;  // a new row is the current one
  At at_ = At::Query;
  FieldValues set_;      // in the current row since the last Update
  FieldValues written_;  // by Update to the current row since it was read
};

}  // namespace pradelis::dataaccess
