#include "dataaccess/sqlite/errors.h"

#include <sqlite3.h>

#include <string>

#include "values/error.h"

namespace pradelis::dataaccess::sqlite {

std::int32_t number_for(int code, std::string_view message) noexcept {
  if (code == SQLITE_CONSTRAINT_DATATYPE) return error_number::value_does_not_fit;
  switch (code & 0xFF) {
    case SQLITE_ERROR:
      return message.starts_with("no such table") || message.starts_with("no such view")
                 ? error_number::no_such_table
                 : error_number::wrong_statement;
    case SQLITE_RANGE:
      return error_number::wrong_statement;
    case SQLITE_CONSTRAINT:
      return error_number::constraint_refused;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_INTERRUPT:
      return error_number::timed_out;
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG:
      return error_number::value_does_not_fit;
    default:
      return error_number::database_failed;
  }
}

bool means_lost(int code) noexcept {
  switch (code & 0xFF) {
    case SQLITE_IOERR:
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_CANTOPEN:
      return true;
    default:
      return code == SQLITE_READONLY_DBMOVED;
  }
}

void raise_failure(sqlite3* database, int code) {
  const std::string message = database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code);
  raise(number_for(code, message), message);
}

}  // namespace pradelis::dataaccess::sqlite
