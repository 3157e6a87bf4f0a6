#pragma once

#include "dataaccess/open_recordset.h"

namespace pradelis::dataaccess {

/// A read-only recordset: a snapshot read whole when it is opened, or a stream of rows.
class ReadRecordset final : public OpenRecordset {
 public:
  enum class Kind : unsigned char { Snapshot, Stream };

  ReadRecordset(std::shared_ptr<PooledConnection> connection, Kind kind)
      : OpenRecordset(std::move(connection)), kind_(kind) {}

  /// Runs `sql` and moves to its first row. The recordset stays closed when the statement has no
  /// result. `limit` is the most rows, 0 for all.
  void run(std::string_view sql, std::size_t limit, std::int64_t* rows_changed);

  bool Eof() override;
  bool Bof() override;
  void MoveNext() override;
  void MoveFirst() override;
  std::int32_t RecordCount() override;
  void AddNew() override { refuse_write(); }
  void Update() override { refuse_write(); }
  void CancelUpdate() override { refuse_write(); }
  void Delete() override { refuse_write(); }
  Variant value(std::size_t index) override;
  void set_value(std::size_t index, const Variant& value) override;

 private:
  /// Runs the lifted statement, with the limit in it where the server can be told of it.
  StatementLease run_limited(LiveConnection& live, std::span<const Cell> values, std::size_t limit);
  [[noreturn]] void refuse_write() const;

  Kind kind_;
  std::string sql_;  // of a stream, for the text of a failure
};

}  // namespace pradelis::dataaccess
