#pragma once

#include <sqlite3.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/driver.h"
#include "dataaccess/iso_date.h"
#include "dataaccess/sqlite/column_types.h"
#include "dataaccess/sqlite/time_limit.h"

namespace pradelis::dataaccess::sqlite {

/// What a connection shares with its statements.
struct Shared {
  sqlite3* database = nullptr;
  TimeLimit limit;
  int last_failure = SQLITE_OK;  ///< extended code
  bool lost = false;

  /// Notes and raises a failure.
  [[noreturn]] void fail(int code);
};

struct Finalize {
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, Finalize>;

/// Prepares exactly one statement. Raises -2147217900 for none, for several, and for one with
/// parameters other than "?".
StatementHandle prepare_one(Shared& shared, std::string_view sql);

class Statement final : public DriverStatement {
 public:
  Statement(Shared& shared, std::string_view sql)
      : shared_(shared), handle_(prepare_one(shared, sql)), columns_(describe_columns(handle_.get())) {}

  const ResultColumnsPtr& columns() override { return columns_; }
  void bind(std::size_t index, const Cell& value) override;
  void run(std::int16_t seconds) override;
  bool fetch() override;
  void renew_time() noexcept override { fresh_time_ = true; }
  void read(std::size_t first, std::span<Cell> cells) override;
  std::int64_t rows_changed() override { return rows_changed_; }
  void reset() noexcept override { sqlite3_reset(handle_.get()); }

 private:
  int bind_date(int position, const Cell& value);
  bool step();

  Shared& shared_;
  StatementHandle handle_;
  ResultColumnsPtr columns_;
  std::int16_t seconds_ = 0;
  bool fresh_time_ = false;
  bool first_step_ = false;
  std::int64_t rows_changed_ = 0;
  std::vector<std::array<char, iso_date_size>> dates_;  // texts of bound dates, by parameter
  int reprepared_ = 0;  // how often SQLite has prepared it again, after changes to tables
};

}  // namespace pradelis::dataaccess::sqlite
