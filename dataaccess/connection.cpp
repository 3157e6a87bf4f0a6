#include "dataaccess/connection.h"

#include <utility>

#include "dataaccess/failures.h"
#include "dataaccess/open_recordset.h"
#include "dataaccess/pooled_connection.h"
#include "dataaccess/read_recordset.h"
#include "dataaccess/table_recordset.h"
#include "dataaccess/tokens.h"
#include "dataaccess/trace.h"
#include "values/text.h"

namespace pradelis::dataaccess {

namespace {
constexpr std::int32_t already_open = 3705;
thread_local std::uint32_t taken_back = 0;

/// Whether a "rollback" takes back a part of the transaction only; `rest` is what follows the word.
bool is_to_savepoint(Tokens rest) noexcept {
  for (Token token = rest.next(); token.kind != TokenKind::End; token = rest.next()) {
    if (keyword(token.text) == keyword("to")) return true;
  }
  return false;
}
}  // namespace

std::uint32_t PooledConnection::times_taken_back() noexcept { return taken_back; }

PooledConnection::~PooledConnection() { release(); }

void PooledConnection::Open() {
  if (open_) raise(already_open, "A operação não é permitida: a conexão já está aberta.");
  live_ = pool_->take(settings_);
  open_settings_ = settings_;
  open_ = true;
}

void PooledConnection::Close() {
  check_open();
  release();
}

void PooledConnection::release() noexcept {
  while (recordsets_ != nullptr) recordsets_->end();
  put_down();
  open_ = false;
}

void PooledConnection::note_transaction(std::string_view sql) noexcept {
  Tokens tokens(sql);
  switch (keyword(tokens.next().text)) {
    case keyword("begin"):
    case keyword("start"):
      in_transaction_ = true;
      break;
    case keyword("commit"):
    case keyword("end"):
      in_transaction_ = false;
      break;
    case keyword("rollback"):
    case keyword("abort"):
      ++taken_back;
      in_transaction_ = in_transaction_ && is_to_savepoint(tokens);
      break;
    default:
      break;
  }
}

// A failure may end a transaction, whatever the page goes on to say.
void PooledConnection::note_failure() noexcept {
  if (in_transaction_) ++taken_back;
}

// Drivers of servers take back what was begun by their own call, and leave alone what a statement began.
void PooledConnection::end_transaction() noexcept {
  if (!std::exchange(in_transaction_, false)) return;
  ++taken_back;
  if (!live_) return;
  try {
    run(StatementText::of("rollback"), {});
  } catch (const Error&) {
    live_.reset();  // nobody else shall work in it
  }
}

void PooledConnection::put_down() noexcept {
  end_transaction();
  if (live_) pool_->give_back(open_settings_, std::move(live_));
  live_.reset();
}

void PooledConnection::check_open() const {
  if (!open_) raise_closed_connection();
}

// A transaction is not asked whether it is still there: what goes on without it would be written alone.
LiveConnection& PooledConnection::live() {
  check_open();
  if (!live_) {
    live_ = pool_->take(open_settings_);
  } else if (in_transaction_ ? live_->connection().lost() : !live_->usable()) {
    reconnect();
  }
  return *live_;
}

// What a connection that only reads leaves behind is in memory. Others may use what it stood on: the
// connections of a tree, one inside the other, are one to the server.
void PooledConnection::put_down_between_reads() noexcept {
  if (keeps_live_ || in_transaction_ || open_settings_.mode != ConnectMode::Read) return;
  for (OpenRecordset* recordset = recordsets_; recordset != nullptr;
       recordset = recordset->next_of_connection()) {
    if (recordset->needs_connection()) return;
  }
  put_down();
}

// Rows in memory survive the connection; recordsets whose statement stood on it end with it.
void PooledConnection::reconnect() {
  for (OpenRecordset* recordset = recordsets_; recordset != nullptr;) {
    OpenRecordset* next = recordset->next_of_connection();
    if (recordset->standing()) recordset->end();
    recordset = next;
  }
  if (std::exchange(in_transaction_, false)) ++taken_back;
  live_.reset();
  live_ = pool_->take(open_settings_);
}

void PooledConnection::read_off_results() {
  for (OpenRecordset* recordset = recordsets_; recordset != nullptr;
       recordset = recordset->next_of_connection()) {
    recordset->read_off();
  }
}

StatementLease PooledConnection::run(const StatementText& text, std::span<const Cell> values) {
  if (live_->traits().one_result) read_off_results();
  for (bool first_try = true;; first_try = false) {
    StatementLease statement = live_->statements().take(text);
    for (std::size_t index = 0; index < values.size(); ++index) statement->bind(index, values[index]);
    try {
      statement->run(settings_.command_timeout);
      live_->note_use();
      return statement;
    } catch (const Error&) {
      note_failure();
      if (!first_try || !live_->connection().hindered_by_open_results()) throw;
    }
    statement.give_back();
    read_off_results();
  }
}

std::int64_t PooledConnection::change(const StatementText& text, std::span<const Cell> values) {
  TraceLine trace(text.text, values);
  try {
    live();
    const std::int64_t changed = run(text, values)->rows_changed();
    trace.set_rows(changed);
    return changed;
  } catch (const Error& failure) {
    note_failure();
    raise_for_statement(failure, text.text);
  }
}

RecordsetPtr PooledConnection::Execute(const std::string& sql, std::int64_t* rows_changed) {
  return open_rows(sql, location_ != CursorLocation::Client, 0, rows_changed);
}

RecordsetPtr PooledConnection::open_rows(const std::string& sql, bool streamed, std::size_t limit,
                                         std::int64_t* rows_changed) {
  check_open();
  const auto kind = streamed ? ReadRecordset::Kind::Stream : ReadRecordset::Kind::Snapshot;
  auto recordset = std::make_shared<ReadRecordset>(self(), kind);
  if (rows_changed != nullptr) *rows_changed = 0;
  try {
    recordset->run(sql, limit, rows_changed);
  } catch (const Error& failure) {
    note_failure();
    raise_for_statement(failure, sql);
  }
  note_transaction(sql);
  put_down_between_reads();
  return recordset;
}

RecordsetPtr PooledConnection::open_table(const std::string& sql, std::size_t limit) {
  check_open();
  auto recordset = std::make_shared<TableRecordset>(self());
  try {
    recordset->prepare(sql, limit);
  } catch (const Error& failure) {
    note_failure();
    raise_for_statement(failure, sql);
  }
  return recordset;
}

ConnectionPtr new_connection() { return std::make_shared<PooledConnection>(); }

}  // namespace pradelis::dataaccess
