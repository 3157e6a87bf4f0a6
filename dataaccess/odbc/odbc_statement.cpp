#include "dataaccess/odbc/odbc_statement.h"

#include "dataaccess/odbc/wide_text.h"
#include "dataaccess/tokens.h"

namespace pradelis::dataaccess::odbc {

OdbcStatement::OdbcStatement(Session& session, std::string_view sql) : session_(session), sql_(sql) {
  if (!handle_.allocate(SQL_HANDLE_STMT, session.handle())) {
    session.fail(diagnose(SQL_HANDLE_DBC, session.handle()));
  }
}

const ResultColumnsPtr& OdbcStatement::columns() {
  if (!described_) {
    if (stage_ != Stage::Prepared) prepare();
    learn_columns();
  }
  return shape_.columns;
}

void OdbcStatement::bind(std::size_t index, const Cell& value) {
  while (parameters_.size() <= index) parameters_.emplace_back();
  parameters_[index].set(value, traits_of(session_.engine()).microseconds);
}

void OdbcStatement::run(std::int16_t seconds) {
  if (seconds != seconds_) {
    session_.limit_time(handle_.get(), seconds);
    seconds_ = seconds;
  }
  SQLUSMALLINT number = 0;
  bool other_kinds = false;
  for (Parameter& parameter : parameters_) {
    other_kinds = parameter.attach(session_, handle_.get(), ++number) || other_kinds;
  }
  if (stage_ == Stage::Prepared && (other_kinds || (prepared_unbound_ && number > 0)))
    stage_ = Stage::RanOnce;
  const SQLRETURN result = execute();
  // An update that finds no row says "no data"; that is no failure.
  if (result != SQL_NO_DATA && !succeeded(result)) {
    const Diagnosis diagnosis = diagnose(SQL_HANDLE_STMT, handle_.get());
    if (stage_ != Stage::Prepared || !means_stale(diagnosis)) session_.fail(diagnosis);
    execute_afresh();
  }
  if (!described_) learn_columns();
  open_ = !shape_.columns->empty();
  if (!open_) return;
  if (reader_ == nullptr) reader_ = make_reader(session_, handle_.get(), shape_.forms);
  reader_->start();
}

SQLRETURN OdbcStatement::execute() {
  if (stage_ == Stage::New || (stage_ == Stage::RanOnce && begins_or_ends())) {
    stage_ = Stage::RanOnce;
    WideText text = wide_text(sql_);
    return SQLExecDirectW(handle_.get(), text.data(), unit_count(text));
  }
  if (stage_ == Stage::RanOnce) {
    forget_columns();  // somebody may have changed the table meanwhile
    prepare();
  }
  return SQLExecute(handle_.get());
}

// Servers do not let a transaction begin or end inside the call of a prepared statement.
bool OdbcStatement::begins_or_ends() const noexcept {
  return parameters_.empty() && described_ && shape_.columns->empty();
}

void OdbcStatement::execute_afresh() {
  forget_columns();
  prepare();
  if (const SQLRETURN result = SQLExecute(handle_.get()); result != SQL_NO_DATA) {
    session_.check(result, handle_.get());
  }
}

void OdbcStatement::prepare() {
  WideText text = wide_text(text_for_preparing());
  session_.check(SQLPrepareW(handle_.get(), text.data(), unit_count(text)), handle_.get());
  stage_ = Stage::Prepared;
  prepared_unbound_ = parameters_.empty() && traits_of(session_.engine()).marker_cast != nullptr;
}

std::string OdbcStatement::text_for_preparing() const {
  const auto marker_cast = traits_of(session_.engine()).marker_cast;
  if (marker_cast == nullptr || parameters_.empty()) return sql_;
  std::string text;
  std::size_t copied = 0;
  auto parameter = parameters_.begin();
  Tokens tokens(sql_);
  for (Token token = tokens.next(); token.kind != TokenKind::End; token = tokens.next()) {
    if (token.kind != TokenKind::Marker || parameter == parameters_.end()) continue;
    const std::size_t end = tokens.position(token) + token.text.size();
    text.append(sql_, copied, end - copied).append(marker_cast((parameter++)->sql_type()));
    copied = end;
  }
  return text.append(sql_, copied);
}

void OdbcStatement::forget_columns() noexcept {
  if (reader_ != nullptr) SQLFreeStmt(handle_.get(), SQL_UNBIND);
  reader_.reset();
  described_ = false;
}

void OdbcStatement::learn_columns() {
  shape_ = describe_result(session_, handle_.get());
  described_ = true;
}

bool OdbcStatement::fetch() { return open_ && reader_->fetch(); }

std::int64_t OdbcStatement::rows_changed() {
  if (!shape_.columns->empty()) return 0;
  SQLLEN rows = 0;
  session_.check(SQLRowCount(handle_.get(), &rows), handle_.get());
  return rows > 0 ? static_cast<std::int64_t>(rows) : 0;
}

void OdbcStatement::reset() noexcept {
  if (open_) SQLFreeStmt(handle_.get(), SQL_CLOSE);
  open_ = false;
}

}  // namespace pradelis::dataaccess::odbc
