#include "dataaccess/schema/engine.h"

#include "values/error.h"

namespace pradelis::dataaccess::schema {

const Engine& engine_for(std::string_view connection_string) {
  if (connection_string.starts_with("sqlite:")) return sqlite_engine;
  raise(error_number::database_failed, "Para este banco de dados não há esquema.");
}

}  // namespace pradelis::dataaccess::schema
