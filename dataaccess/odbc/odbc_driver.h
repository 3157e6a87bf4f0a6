#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "dataaccess/driver.h"

namespace pradelis::dataaccess::odbc {

/// The driver for every server that has an ODBC driver on this machine.
class OdbcDriver : public Driver {
 public:
  bool accepts(std::string_view connection_string) const override;
  std::unique_ptr<DriverConnection> connect(const ConnectionSettings& settings) const override;
  std::size_t kept_idle() const noexcept override { return 0; }
};

}  // namespace pradelis::dataaccess::odbc
