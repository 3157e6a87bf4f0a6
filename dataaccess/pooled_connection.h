#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "dataaccess/connection.h"
#include "dataaccess/driver.h"
#include "dataaccess/live_connection.h"
#include "dataaccess/pool.h"
#include "dataaccess/row_store.h"
#include "dataaccess/statement_cache.h"

namespace pradelis::dataaccess {

class OpenRecordset;

/// The connection object: settings, the live connection from the pool while it is needed, and the
/// recordsets that are open on it. Recordsets keep their connection alive.
class PooledConnection final : public Connection {
 public:
  PooledConnection() : pool_(process_pool()) {}
  ~PooledConnection() override;

  const std::string& ConnectionString() const override { return settings_.connection_string; }
  void set_ConnectionString(const std::string& value) override { settings_.connection_string = value; }
  CursorLocation Location() const override { return location_; }
  void set_Location(CursorLocation value) override { location_ = value; }
  ConnectMode Mode() const override { return settings_.mode; }
  void set_Mode(ConnectMode value) override { settings_.mode = value; }
  void set_ConnectionTimeout(std::int16_t seconds) override { settings_.connection_timeout = seconds; }
  void set_CommandTimeout(std::int16_t seconds) override { settings_.command_timeout = seconds; }

  void Open() override;
  ObjectState State() const override { return open_ ? ObjectState::Open : ObjectState::Closed; }
  void Close() override;
  RecordsetPtr Execute(const std::string& sql, std::int64_t* rows_changed) override;

  /// A read-only recordset on the result of `sql`, closed when the statement has none. `streamed`: row
  /// by row from the database instead of read whole. `limit` is the most rows, 0 for all.
  RecordsetPtr open_rows(const std::string& sql, bool streamed, std::size_t limit,
                         std::int64_t* rows_changed = nullptr);
  /// An updatable recordset; its statement is checked, and runs when a row is asked for.
  RecordsetPtr open_table(const std::string& sql, std::size_t limit);

  /// Opens the connection again when it was lost. Raises 3704 when it is closed.
  LiveConnection& live();
  /// Makes sure, at the next use, that a connection to a server is still there.
  void distrust() noexcept {
    if (live_) live_->distrust();
  }
  /// How often on this thread a transaction that a page began may have been taken back, with all that was
  /// written in it: by "rollback", or with its connection.
  static std::uint32_t times_taken_back() noexcept;
  /// Keeps the live connection also between the reads of a connection that only reads.
  void keep_live(bool keep) noexcept { keeps_live_ = keep; }
  /// Runs a statement of the suite's dialect, with "?" for its values. What the values point to stays
  /// while the statement is in use. Results that stand open are read off when they are in its way.
  StatementLease run(const StatementText& text, std::span<const Cell> values);
  /// Runs a statement that a recordset makes, traced; gives the number of rows that it changed.
  std::int64_t change(const StatementText& text, std::span<const Cell> values);

 private:
  friend class OpenRecordset;

  std::shared_ptr<PooledConnection> self() {
    return std::static_pointer_cast<PooledConnection>(shared_from_this());
  }
  void reconnect();
  void read_off_results();
  void check_open() const;
  void note_transaction(std::string_view sql) noexcept;
  void note_failure() noexcept;
  void end_transaction() noexcept;
  void put_down() noexcept;
  void put_down_between_reads() noexcept;
  void release() noexcept;

  std::shared_ptr<Pool> pool_;
  ConnectionSettings settings_;
  ConnectionSettings open_settings_;  // those of the live connection
  CursorLocation location_ = CursorLocation::Server;
  bool open_ = false;
  bool keeps_live_ = false;
  bool in_transaction_ = false;           // that a page began
  std::unique_ptr<LiveConnection> live_;  // also null while nothing stands on a connection that only reads
  OpenRecordset* recordsets_ = nullptr;   // a list through the recordsets
  RowStore spare_memory_;                 // of the last recordset that ended, for the next one
};

}  // namespace pradelis::dataaccess
