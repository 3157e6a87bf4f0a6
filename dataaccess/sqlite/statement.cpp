#include "dataaccess/sqlite/statement.h"

#include <charconv>

#include "dataaccess/sqlite/errors.h"
#include "dataaccess/tokens.h"
#include "values/error.h"

namespace pradelis::dataaccess::sqlite {
namespace {

double number_of(std::string_view decimal) noexcept {
  double number = 0;
  std::from_chars(decimal.data(), decimal.data() + decimal.size(), number);
  return number;
}

bool is_blank(std::string_view sql) noexcept {
  Tokens tokens(sql);
  Token token = tokens.next();
  while (token.kind == TokenKind::Semicolon) token = tokens.next();
  return token.kind == TokenKind::End;
}

// Only the connection's own thread uses its values, which is what these calls ask for.
Cell cell_of(sqlite3_value* value) noexcept {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      return Cell::of(std::int64_t{sqlite3_value_int64(value)});
    case SQLITE_FLOAT:
      return Cell::of(sqlite3_value_double(value));
    case SQLITE_TEXT: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
      return Cell::of(std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value))));
    }
    case SQLITE_BLOB: {
      const auto* data = static_cast<const char*>(sqlite3_value_blob(value));
      return Cell::of(std::string_view(data, static_cast<std::size_t>(sqlite3_value_bytes(value))),
                      CellKind::Bytes);
    }
    default:
      return Cell::null();
  }
}

}  // namespace

void Shared::fail(int code) {
  last_failure = code;
  lost = lost || means_lost(code);
  raise_failure(database, code);
}

StatementHandle prepare_one(Shared& shared, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  const char* rest = nullptr;
  const int code = sqlite3_prepare_v3(shared.database, sql.data(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement, &rest);
  StatementHandle handle(statement);
  if (code != SQLITE_OK) shared.fail(code);
  if (!handle) raise(error_number::wrong_statement, "A instrução está vazia.");
  if (!is_blank(sql.substr(static_cast<std::size_t>(rest - sql.data())))) {
    raise(error_number::wrong_statement, "Há mais de uma instrução no texto.");
  }
  const int parameters = sqlite3_bind_parameter_count(statement);
  for (int index = 1; index <= parameters; ++index) {
    if (const char* name = sqlite3_bind_parameter_name(statement, index)) {
      raise(error_number::wrong_statement, std::string("Não há valor para o parâmetro ") + name + ".");
    }
  }
  return handle;
}

void Statement::bind(std::size_t index, const Cell& value) {
  const int position = static_cast<int>(index) + 1;
  sqlite3_stmt* statement = handle_.get();
  int code = SQLITE_OK;
  switch (value.kind) {
    case CellKind::Null:
      code = sqlite3_bind_null(statement, position);
      break;
    case CellKind::Boolean:
    case CellKind::Integer:
      code = sqlite3_bind_int64(statement, position, value.integer);
      break;
    case CellKind::Real:
      code = sqlite3_bind_double(statement, position, value.real);
      break;
    case CellKind::Decimal:
      code = sqlite3_bind_double(statement, position, number_of(value.text()));
      break;
    case CellKind::Date:
    case CellKind::Day:
      code = bind_date(position, value);
      break;
    case CellKind::Text:
      // An empty text may point nowhere, which the engine would take for null.
      code = sqlite3_bind_text64(statement, position, value.size == 0 ? "" : value.data, value.size,
                                 SQLITE_STATIC, SQLITE_UTF8);
      break;
    case CellKind::Bytes:
      code = sqlite3_bind_blob64(statement, position, value.size == 0 ? "" : value.data, value.size,
                                 SQLITE_STATIC);
      break;
  }
  if (code != SQLITE_OK) shared_.fail(code);
}

int Statement::bind_date(int position, const Cell& value) {
  if (dates_.empty()) dates_.resize(static_cast<std::size_t>(sqlite3_bind_parameter_count(handle_.get())));
  char* buffer = dates_[static_cast<std::size_t>(position) - 1].data();
  const std::string_view text = write_iso_date({value.real}, value.kind == CellKind::Day, buffer);
  return sqlite3_bind_text64(handle_.get(), position, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
}

void Statement::run(std::int16_t seconds) {
  seconds_ = seconds;
  fresh_time_ = false;
  first_step_ = true;
  shared_.limit.start(seconds);
  if (!columns_->empty()) return;  // the first fetch runs it
  const sqlite3_int64 before = sqlite3_total_changes64(shared_.database);
  while (step()) {
  }
  // The count of the connection's last change stays when a statement changes no row at all.
  const bool changed = sqlite3_total_changes64(shared_.database) != before;
  rows_changed_ = changed ? sqlite3_changes64(shared_.database) : 0;
}

bool Statement::step() {
  const int code = sqlite3_step(handle_.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) shared_.fail(code);
  return code == SQLITE_ROW;
}

bool Statement::fetch() {
  if (fresh_time_) {
    shared_.limit.start(seconds_);
    fresh_time_ = false;
  }
  const bool found = step();
  if (first_step_) {
    first_step_ = false;
    const int reprepared = sqlite3_stmt_status(handle_.get(), SQLITE_STMTSTATUS_REPREPARE, 0);
    if (reprepared != reprepared_) columns_ = describe_columns(handle_.get());
    reprepared_ = reprepared;
  }
  return found;
}

void Statement::read(std::size_t first, std::span<Cell> cells) {
  int column = static_cast<int>(first);
  for (Cell& cell : cells) cell = cell_of(sqlite3_column_value(handle_.get(), column++));
}

}  // namespace pradelis::dataaccess::sqlite
