#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "dataaccess/odbc/session.h"

namespace pradelis::bench::postgresql {

/// The server's ODBC driver, called as sparingly as it can be: one statement prepared once, whose rows are
/// fetched in blocks into the same buffers and left there. What it takes is the least that the component can
/// take through this driver. Failures raise `Error`.
class BareDriver {
 public:
  /// \param sql  a query of 8 columns: integer, text, text, integer, integer, integer, date, text; with "?"
  ///             for two integers
  BareDriver(const std::string& connection_string, const std::string& sql);
  ~BareDriver();

  /// Fetches all rows; gives their number.
  std::size_t read(std::int32_t first, std::int32_t last);

 private:
  struct Columns;

  dataaccess::odbc::Session session_;
  std::unique_ptr<Columns> columns_;
  std::array<SQLINTEGER, 2> parameters_{};
  SQLULEN fetched_ = 0;
  dataaccess::odbc::Handle statement_;  // ends before its session
};

}  // namespace pradelis::bench::postgresql
