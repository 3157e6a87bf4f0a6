#include <memory>
#include <vector>

#include "dataaccess/driver.h"
#include "dataaccess/odbc/odbc_driver.h"
#include "values/error.h"
#ifndef _WIN32
#include "dataaccess/sqlite/sqlite_driver.h"
#endif

namespace pradelis::dataaccess {
namespace {

// Those asked first stand last.
std::vector<std::unique_ptr<Driver>>& drivers() {
  static std::vector<std::unique_ptr<Driver>> all = [] {
    std::vector<std::unique_ptr<Driver>> built_in;
    built_in.push_back(odbc::new_driver());
#ifndef _WIN32  // the library for Windows is one file, without the embedded engine
    built_in.push_back(sqlite::new_driver());
#endif
    return built_in;
  }();
  return all;
}

}  // namespace

void register_driver(std::unique_ptr<Driver> driver) { drivers().push_back(std::move(driver)); }

const Driver& driver_for(std::string_view connection_string) {
  for (auto driver = drivers().rbegin(); driver != drivers().rend(); ++driver) {
    if ((*driver)->accepts(connection_string)) return **driver;
  }
  raise(error_number::database_failed, connection_string.empty()
                                           ? "A cadeia de conexão está vazia."
                                           : "A cadeia de conexão não é de nenhum banco de dados conhecido.");
}

}  // namespace pradelis::dataaccess
