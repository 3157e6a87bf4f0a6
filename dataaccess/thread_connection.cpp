#include "dataaccess/thread_connection.h"

#include "dataaccess/failures.h"
#include "dataaccess/pooled_connection.h"
#include "dataaccess/select_reader.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

class ThreadConnection final : public QLCConn {
 public:
  std::int16_t ConnectionTimeout() const override { return connection_timeout_; }
  void set_ConnectionTimeout(std::int16_t seconds) override {
    connection_timeout_ = seconds;
    connection_->set_ConnectionTimeout(seconds);
  }
  std::int16_t CommandTimeout() const override { return command_timeout_; }
  void set_CommandTimeout(std::int16_t seconds) override {
    command_timeout_ = seconds;
    connection_->set_CommandTimeout(seconds);
  }
  const std::string& ConnectionString() const override { return connection_->ConnectionString(); }
  void set_ConnectionString(const std::string& value) override;

  ConnectionPtr Conexao() override { return open_connection(); }
  void Abrir(std::int32_t) override { open_connection(); }

  RecordsetPtr AbrirRecordset(const std::string& sql, CursorType cursor, LockType lock,
                              CursorLocation location, std::int32_t max_records, std::int32_t,
                              std::int32_t) override;
  RecordsetPtr AbrirTabela(const std::string& table, CursorType cursor, LockType lock) override;

 private:
  const std::shared_ptr<PooledConnection>& open_connection() {
    if (connection_->State() == ObjectState::Closed) connection_->Open();
    return connection_;
  }

  std::shared_ptr<PooledConnection> connection_ = std::make_shared<PooledConnection>();
  std::int16_t connection_timeout_ = ConnectionSettings{}.connection_timeout;
  std::int16_t command_timeout_ = ConnectionSettings{}.command_timeout;
};

// Recordsets on the connection to the former database stay open as long as somebody holds them.
void ThreadConnection::set_ConnectionString(const std::string& value) {
  // The settings are written at the beginning of each piece of work: what was lost since the last one
  // is found here and not in the middle of it.
  if (value == connection_->ConnectionString()) return connection_->distrust();
  connection_ = std::make_shared<PooledConnection>();
  connection_->set_ConnectionString(value);
  connection_->set_ConnectionTimeout(connection_timeout_);
  connection_->set_CommandTimeout(command_timeout_);
}

RecordsetPtr ThreadConnection::AbrirRecordset(const std::string& sql, CursorType cursor, LockType lock,
                                              CursorLocation location, std::int32_t max_records, std::int32_t,
                                              std::int32_t) {
  const std::size_t limit = max_records > 0 ? static_cast<std::size_t>(max_records) : 0;
  const bool updatable =
      lock == LockType::Pessimistic || lock == LockType::Optimistic || lock == LockType::BatchOptimistic;
  if (updatable) return open_connection()->open_table(sql, limit);
  const bool streamed = cursor == CursorType::ForwardOnly && location != CursorLocation::Client;
  return open_connection()->open_rows(sql, streamed, limit);
}

RecordsetPtr ThreadConnection::AbrirTabela(const std::string& table, CursorType cursor, LockType lock) {
  if (!is_table_name(table)) {
    raise(error_number::wrong_statement, concat("O nome de tabela não é válido: ", shown_statement(table)));
  }
  return AbrirRecordset(concat("select * from ", table), cursor, lock, CursorLocation::Server, 0, 1, 10);
}

}  // namespace

QLCConnPtr new_thread_connection() { return std::make_shared<ThreadConnection>(); }

// There is no other class of connections.
PooledConnection& connection_of(QLCConn& conn) { return static_cast<PooledConnection&>(*conn.Conexao()); }

}  // namespace pradelis::dataaccess
