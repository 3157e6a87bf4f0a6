#include "dataaccess/odbc/session.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <mutex>

#include "dataaccess/odbc/wide_text.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess::odbc {
namespace {

/// While they connect, drivers set the locale of the process for a moment and look at its name: one thread
/// at a time, so that none reads what another one frees. A server that does not answer holds the others up
/// no longer than their own time for connecting.
std::unique_lock<std::timed_mutex> turn_to_connect(std::int16_t seconds) {
  static std::timed_mutex connecting;
  if (seconds <= 0) return std::unique_lock(connecting);
  // By the system's clock: the thread sanitizer does not see locks that are taken by the steady one.
  std::unique_lock turn(connecting, std::chrono::system_clock::now() + std::chrono::seconds(seconds));
  if (!turn.owns_lock()) {
    raise(error_number::database_failed, "outras conexões esperam pelo servidor de banco de dados");
  }
  return turn;
}

}  // namespace

SQLHENV environment() noexcept {
  // Never freed: with its last handle the driver manager would unload drivers that other threads may
  // still be leaving.
  static const SQLHENV shared = [] {
    SQLHENV handle = nullptr;
    if (!succeeded(SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &handle))) return SQLHENV{};
    SQLSetEnvAttr(handle, SQL_ATTR_ODBC_VERSION, attribute_value(SQL_OV_ODBC3), 0);
    return handle;
  }();
  return shared;
}

Session::Session() {
  if (environment() == nullptr || !connection_.allocate(SQL_HANDLE_DBC, environment())) {
    raise(error_number::database_failed, "o gerenciador de drivers ODBC não está disponível");
  }
}

Session::~Session() {
  if (connected_) SQLDisconnect(handle());
}

bool Session::known_dead() const noexcept {
  SQLUINTEGER dead = SQL_CD_FALSE;
  const SQLRETURN result = SQLGetConnectAttrW(handle(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
  return succeeded(result) && dead == SQL_CD_TRUE;
}

void Session::connect(std::string_view connection_string, std::string_view secret, std::int16_t seconds,
                      bool read_only) {
  secret_ = secret;
  const auto limit = static_cast<SQLULEN>(seconds > 0 ? seconds : 0);
  SQLSetConnectAttrW(handle(), SQL_ATTR_LOGIN_TIMEOUT, attribute_value(limit), 0);
  if (read_only) SQLSetConnectAttrW(handle(), SQL_ATTR_ACCESS_MODE, attribute_value(SQL_MODE_READ_ONLY), 0);
  WideText text = wide_text(connection_string);
  auto turn = turn_to_connect(seconds);
  const SQLRETURN result =
      SQLDriverConnectW(handle(), nullptr, text.data(), static_cast<SQLSMALLINT>(unit_count(text)), nullptr,
                        0, nullptr, SQL_DRIVER_NOPROMPT);
  turn.unlock();
  if (!succeeded(result)) {
    Diagnosis diagnosis = diagnose(SQL_HANDLE_DBC, handle());
    diagnosis.state = "08001";  // whatever the reason: there is no connection
    diagnosis.native = 0;
    fail(diagnosis);
  }
  connected_ = true;
  learn();
  const std::string_view statement = traits_of(engine_).read_only_session;
  if (read_only && !statement.empty() && !run_quietly(statement)) {
    raise(error_number::database_failed, "a conexão não aceita ser somente de leitura");
  }
}

void Session::learn() {
  engine_ = engine_named(info_text(SQL_DBMS_NAME));
  SQLUINTEGER extensions = 0;
  SQLGetInfoW(handle(), SQL_GETDATA_EXTENSIONS, &extensions, sizeof extensions, nullptr);
  reading_.any_order = (extensions & SQL_GD_ANY_COLUMN) != 0 && (extensions & SQL_GD_ANY_ORDER) != 0;
  reading_.bound = (extensions & SQL_GD_BOUND) != 0;
  reading_.in_block = (extensions & SQL_GD_BLOCK) != 0;
  SQLUSMALLINT activities = 0;
  SQLGetInfoW(handle(), SQL_MAX_CONCURRENT_ACTIVITIES, &activities, sizeof activities, nullptr);
  one_result_ = activities == 1;
}

std::string Session::info_text(SQLUSMALLINT what) const {
  std::array<SQLWCHAR, 128> text{};
  SQLSMALLINT bytes = 0;
  if (!succeeded(SQLGetInfoW(handle(), what, text.data(), static_cast<SQLSMALLINT>(sizeof text), &bytes)))
    return {};
  return utf8_text(text.data(), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
}

void Session::fail(SQLHSTMT statement) { fail(diagnose(SQL_HANDLE_STMT, statement)); }

void Session::fail(const Diagnosis& diagnosis) {
  lost_ = lost_ || means_lost(diagnosis) || (connected_ && known_dead());
  busy_ = means_busy(diagnosis);
  std::string text = diagnosis.text;
  if (!secret_.empty()) text = replace_all(text, secret_, "***");
  raise(lost_ ? error_number::database_failed : number_of(diagnosis, engine_), std::move(text));
}

bool Session::run_quietly(std::string_view sql) noexcept {
  Handle statement;
  if (!statement.allocate(SQL_HANDLE_STMT, handle())) return false;
  WideText text = wide_text(sql);
  const bool done = succeeded(SQLExecDirectW(statement.get(), text.data(), unit_count(text)));
  if (!done) lost_ = lost_ || means_lost(diagnose(SQL_HANDLE_STMT, statement.get())) || known_dead();
  return done;
}

void Session::limit_time(SQLHSTMT statement, std::int16_t seconds) noexcept {
  const auto limit = static_cast<SQLULEN>(seconds > 0 ? seconds : 0);
  SQLSetStmtAttrW(statement, SQL_ATTR_QUERY_TIMEOUT, attribute_value(limit), 0);
  last_time_limit_ = seconds;
}

}  // namespace pradelis::dataaccess::odbc
