#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/driver.h"
#include "dataaccess/odbc/odbc_api.h"
#include "dataaccess/odbc/parameter.h"
#include "dataaccess/odbc/result_columns.h"
#include "dataaccess/odbc/row_readers.h"
#include "dataaccess/odbc/session.h"

namespace pradelis::dataaccess::odbc {

/// A statement of an ODBC connection. The server is asked to prepare it when its columns are wanted
/// before it ran, or when it runs a second time: one that runs once costs one round trip.
class OdbcStatement : public DriverStatement {
 public:
  OdbcStatement(Session& session, std::string_view sql);

  const ResultColumnsPtr& columns() override;
  void bind(std::size_t index, const Cell& value) override;
  void run(std::int16_t seconds) override;
  bool fetch() override;
  void renew_time() noexcept override {}
  void read(std::size_t first, std::span<Cell> cells) override {
    for (Cell& cell : cells) cell = reader_->cell(first++);
  }
  std::int64_t rows_changed() override;
  void reset() noexcept override;

 private:
  enum class Stage : std::uint8_t { New, RanOnce, Prepared };

  void prepare();
  std::string text_for_preparing() const;
  SQLRETURN execute();
  /// Whether it may begin or end a transaction: it has neither values nor a result.
  bool begins_or_ends() const noexcept;
  /// Makes the server prepare the statement again and runs it.
  void execute_afresh();
  void learn_columns();
  void forget_columns() noexcept;

  Session& session_;
  Handle handle_;
  std::string sql_;
  Stage stage_ = Stage::New;
  std::deque<Parameter> parameters_;
  std::int16_t seconds_ = 0;
  bool prepared_unbound_ = false;  ///< when it was prepared, its values' types were not known
  bool described_ = false;
  bool open_ = false;  ///< a result stands open
  ResultShape shape_;
  std::unique_ptr<RowReader> reader_;
};

}  // namespace pradelis::dataaccess::odbc
