#pragma once

#include <memory>

#include "dataaccess/driver.h"

namespace pradelis::dataaccess::odbc {

/// The driver for every server that has an ODBC driver on this machine. Connection strings:
/// "Driver=...;..." and "DSN=...;..." as that driver takes them, and the strings of existing
/// deployments ("Provider=SQLOLEDB;..."); `docs/databases.md` lists them.
std::unique_ptr<Driver> new_driver();

}  // namespace pradelis::dataaccess::odbc
