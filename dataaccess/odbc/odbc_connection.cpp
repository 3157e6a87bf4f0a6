#include "dataaccess/odbc/odbc_connection.h"

#include <utility>

#include "dataaccess/dialect.h"
#include "dataaccess/odbc/key_catalogue.h"
#include "dataaccess/odbc/odbc_statement.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess::odbc {
namespace {

bool is_query(std::string_view sql) {
  const std::size_t begin = sql.find_first_not_of(" \t\r\n(");
  if (begin == std::string_view::npos) return false;
  const std::string_view text = sql.substr(begin);
  return equal_ignoring_case(text.substr(0, 6), "select") || equal_ignoring_case(text.substr(0, 4), "with");
}

}  // namespace

OdbcConnection::OdbcConnection(std::unique_ptr<Session> session, std::string database, bool reads)
    : session_(std::move(session)), database_(std::move(database)), reads_(reads) {}

std::unique_ptr<DriverStatement> OdbcConnection::prepare(std::string_view sql) {
  if (reads_ && !is_query(sql)) {
    raise(error_number::not_writable, "a conexão foi aberta somente para leitura");
  }
  return std::make_unique<OdbcStatement>(*session_, sql);
}

std::vector<std::string> OdbcConnection::key_columns(std::string_view table) {
  return key_columns_of(*session_, database_, table);
}

const Dialect& OdbcConnection::dialect() const { return *traits_of(session_->engine()).dialect; }

ConnectionTraits OdbcConnection::traits() const { return {true, session_->one_result()}; }

bool OdbcConnection::alive() noexcept {
  return !session_->lost() && !session_->known_dead() &&
         session_->run_quietly(traits_of(session_->engine()).ping);
}

void OdbcConnection::tidy() noexcept {
  if (reads_) return;  // queries alone leave nothing open
  SQLEndTran(SQL_HANDLE_DBC, session_->handle(), SQL_ROLLBACK);
}

}  // namespace pradelis::dataaccess::odbc
