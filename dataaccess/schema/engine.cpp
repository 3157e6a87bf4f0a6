#include "dataaccess/schema/engine.h"

#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess::schema {

const Engine& engine_of(const Dialect& dialect) {
  for (const Engine* engine :
       {&sqlite_engine, &sqlite_odbc_engine, &postgresql_engine, &sql_server_engine, &oracle_engine}) {
    if (engine->name == dialect.engine) return *engine;
  }
  raise(error_number::database_failed, concat("Para o banco de dados ", dialect.engine, " não há esquema."));
}

std::string creating_connection_string(const std::string& connection_string) {
  if (!connection_string.starts_with("sqlite:")) return connection_string;
  if (connection_string.find("create=") != std::string::npos) return connection_string;
  return connection_string + (connection_string.find('?') == std::string::npos ? "?create=1" : "&create=1");
}

}  // namespace pradelis::dataaccess::schema
