#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "dataaccess/driver.h"
#include "dataaccess/lifter.h"
#include "dataaccess/statement_cache.h"
#include "dataaccess/table_plan.h"

namespace pradelis::dataaccess {

/// One connection to a database with what was learned and prepared on it: the thing that the pool
/// keeps. Used by one thread at a time.
class LiveConnection {
 public:
  LiveConnection(const Driver& driver, const ConnectionSettings& settings)
      : driver_(&driver),
        connection_(driver.connect(settings)),
        traits_(connection_->traits()),
        statements_(*connection_) {}
  LiveConnection(const LiveConnection&) = delete;
  LiveConnection& operator=(const LiveConnection&) = delete;

  const Driver& driver() const noexcept { return *driver_; }
  DriverConnection& connection() noexcept { return *connection_; }
  const ConnectionTraits& traits() const noexcept { return traits_; }
  StatementCache& statements() noexcept { return statements_; }
  Lifter& lifter() noexcept { return lifter_; }
  /// The plan for an updatable recordset on this lifted text. Raises what preparing it raises.
  const TablePlanPtr& table_plan(const StatementText& text);

  /// Whether the connection can be used: no failure has shown it gone and, where the database can go
  /// without a sign and the connection has not been used for a while, the database says so.
  bool usable() noexcept;
  /// Has the database asked before the next use, unless it answered just now.
  void distrust() noexcept;
  /// Notes that the database has just answered.
  void note_use() noexcept {
    if (traits_.remote) last_use_ = std::chrono::steady_clock::now();
  }

 private:
  const Driver* driver_;
  std::unique_ptr<DriverConnection> connection_;
  ConnectionTraits traits_;
  StatementCache statements_;  // ends before its connection
  Lifter lifter_;
  std::unordered_map<StatementText, TablePlanPtr, HashOfStatementText> plans_;  // by the plans' own texts
  std::chrono::steady_clock::time_point last_use_ = std::chrono::steady_clock::now();
};

}  // namespace pradelis::dataaccess
