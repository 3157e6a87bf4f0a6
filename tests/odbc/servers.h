#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dataaccess/driver.h"

namespace pradelis::tests {

/// A database that the driver reaches through ODBC, and in what its driver is special.
struct Server {
  std::string name;
  std::string connection_string;
  /// Why it cannot be had here; empty when it can.
  std::string missing;
};

/// PostgreSQL, and SQLite by its ODBC driver, each with an empty database of this process.
std::vector<Server> servers();
/// PostgreSQL alone.
const Server& postgresql();

/// A connection of the driver under test.
std::unique_ptr<dataaccess::DriverConnection> connect(
    const std::string& connection_string, dataaccess::ConnectMode mode = dataaccess::ConnectMode::Unknown);

/// Runs a statement to its end; gives the rows changed.
std::int64_t run(dataaccess::DriverConnection& connection, const std::string& sql);
/// The values of the first row's first column, as text; "null" for null.
std::string first_value(dataaccess::DriverConnection& connection, const std::string& sql);

/// One value of a statement's present row.
dataaccess::Cell cell_of(dataaccess::DriverStatement& statement, std::size_t column);

}  // namespace pradelis::tests
