#include "dataaccess/sqlite/sqlite_driver.h"

#include <sqlite3.h>

#include "dataaccess/dialect.h"
#include "dataaccess/sqlite/errors.h"
#include "dataaccess/sqlite/functions.h"
#include "dataaccess/sqlite/options.h"
#include "dataaccess/sqlite/statement.h"
#include "dataaccess/tokens.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess::sqlite {
namespace {

struct CloseDatabase {
  void operator()(sqlite3* database) const noexcept { sqlite3_close_v2(database); }
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;

DatabaseHandle open_file(const Options& options, bool read_only) {
  int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  flags |= read_only ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
  if (options.create && !read_only) flags |= SQLITE_OPEN_CREATE;
  sqlite3* database = nullptr;
  const int code = sqlite3_open_v2(options.path.c_str(), &database, flags, nullptr);
  DatabaseHandle handle(database);
  if (code == SQLITE_OK) return handle;
  const char* hint = options.create ? "" : " (um arquivo que falta só é criado com ?create=1)";
  raise(error_number::database_failed,
        concat("O banco de dados ", options.path, " não pôde ser aberto", hint, ": ", sqlite3_errstr(code)));
}

// "dbo.[x]" is kept as "x".
std::string unquoted_last_part(std::string_view table) {
  Tokens tokens(table);
  Token last;
  for (Token token = tokens.next(); token.kind != TokenKind::End; token = tokens.next()) last = token;
  if (last.kind != TokenKind::QuotedName) return std::string(last.text);
  const char quote = last.text.back();
  return replace_all(last.text.substr(1, last.text.size() - 2), std::string(2, quote), std::string(1, quote));
}

class SqliteConnection final : public DriverConnection {
 public:
  explicit SqliteConnection(const ConnectionSettings& settings);

  std::unique_ptr<DriverStatement> prepare(std::string_view sql) override {
    return std::make_unique<Statement>(shared_, sql);
  }
  std::vector<std::string> key_columns(std::string_view table) override;
  const Dialect& dialect() const override { return sqlite_dialect; }
  ConnectionTraits traits() const override { return {}; }
  bool alive() noexcept override;
  bool lost() const noexcept override { return shared_.lost; }
  bool hindered_by_open_results() const noexcept override {
    return shared_.last_failure == SQLITE_BUSY_SNAPSHOT || (shared_.last_failure & 0xFF) == SQLITE_LOCKED;
  }
  void tidy() noexcept override {
    if (sqlite3_get_autocommit(handle_.get()) != 0) return;
    sqlite3_exec(handle_.get(), "rollback", nullptr, nullptr, nullptr);
  }

 private:
  void configure(const Options& options, bool read_only, std::int16_t seconds);
  std::vector<std::string> names(std::string_view sql, std::string_view table);

  DatabaseHandle handle_;
  Shared shared_;
};

SqliteConnection::SqliteConnection(const ConnectionSettings& settings) {
  const Options options = read_connection_string(settings.connection_string);
  const bool read_only = settings.mode == ConnectMode::Read;
  handle_ = open_file(options, read_only);
  shared_.database = handle_.get();
  shared_.limit.watch(handle_.get(), options.busy_milliseconds);
  try {
    configure(options, read_only, settings.connection_timeout);
  } catch (const Error& failure) {
    raise(error_number::database_failed,
          concat("O banco de dados ", options.path, " não pôde ser aberto: ", failure.description()));
  }
}

void SqliteConnection::configure(const Options& options, bool read_only, std::int16_t seconds) {
  // A text in double quotes is a name; one that names nothing is a failure and not a text.
  sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  // Plans do not depend on the values of parameters: else each new value could mean preparing again.
  sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_ENABLE_QPSG, 1, nullptr);
  add_functions(handle_.get());
  Statement(shared_, "pragma synchronous = " + options.synchronous).run(seconds);
  // The first access to the file: it fails here when it is no database.
  Statement mode(shared_, read_only ? "pragma journal_mode" : "pragma journal_mode = wal");
  mode.run(seconds);
  mode.fetch();
}

// The first column of a query about a table.
std::vector<std::string> SqliteConnection::names(std::string_view sql, std::string_view table) {
  Statement query(shared_, sql);
  query.bind(0, Cell::of(table));
  query.run(0);
  std::vector<std::string> found;
  for (Cell name; query.fetch(); found.emplace_back(name.text())) query.read(0, {&name, 1});
  return found;
}

std::vector<std::string> SqliteConnection::key_columns(std::string_view table) {
  const std::string name = unquoted_last_part(table);
  auto keys = names("select name from pragma_table_info(?) where pk > 0 order by pk", name);
  if (!keys.empty()) return keys;
  // A table without a key has its rows' numbers, unless columns of its own take their names.
  return names(
      "select k.column1 from (values ('rowid'), ('_rowid_')) k, pragma_table_list l "
      "where lower(l.name) = lower(?) and l.type = 'table' and l.wr = 0 and k.column1 not in "
      "(select lower(name) from pragma_table_info(l.name)) limit 1",
      name);
}

// False when the file was moved away or deleted under the connection.
bool SqliteConnection::alive() noexcept {
  int moved = 0;
  const int code = sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return code != SQLITE_OK || moved == 0;
}

class SqliteDriver final : public Driver {
 public:
  bool accepts(std::string_view connection_string) const override {
    return is_connection_string(connection_string);
  }
  std::unique_ptr<DriverConnection> connect(const ConnectionSettings& settings) const override {
    return std::make_unique<SqliteConnection>(settings);
  }
  std::size_t kept_idle() const noexcept override { return 1; }
};

}  // namespace

std::unique_ptr<Driver> new_driver() { return std::make_unique<SqliteDriver>(); }

}  // namespace pradelis::dataaccess::sqlite
