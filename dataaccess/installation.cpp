#include "dataaccess/installation.h"

#include "dataaccess/schema/engine.h"
#include "dataaccess/thread_connection.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

void require_row(const RecordsetPtr& row) {
  if (row->Eof()) raise(error_number::database_failed, "O banco de dados não foi inicializado.");
}

std::int32_t only_number(PooledConnection& connection, const std::string& sql) {
  const RecordsetPtr row = connection.Execute(sql, nullptr);
  require_row(row);
  const std::int32_t number = to_int32(row->value(0));
  row->Close();
  return number;
}

/// Takes a block by a change that counts only while nobody else has taken one since it was looked at.
std::int32_t take_block_by_trying(PooledConnection& connection, std::int32_t size) {
  for (;;) {
    const std::int32_t begin = only_number(connection, "select proximooid from instalacao where oid = 1");
    const std::int32_t end = begin + size;
    std::int64_t changed = 0;
    connection.Execute(
        concat("update instalacao set proximooid = ", end, " where oid = 1 and proximooid = ", begin),
        &changed);
    if (changed != 0) return end;
  }
}

std::int32_t take_block(QLCConn& conn, std::int32_t size) {
  PooledConnection& connection = connection_of(conn);
  const schema::Engine& engine = schema::engine_of(connection.live().connection().dialect());
  if (!engine.take_identifiers) return take_block_by_trying(connection, size);
  return only_number(connection, engine.take_identifiers(size));
}

}  // namespace

std::int32_t Installations::next_oid(QLCConn& conn) {
  Installation& installation = installations_[conn.ConnectionString()];
  const std::uint32_t times_taken_back = PooledConnection::times_taken_back();
  if (installation.next == installation.end || installation.times_taken_back != times_taken_back) {
    installation.end = take_block(conn, block_size);
    installation.next = installation.end - block_size;
    installation.times_taken_back = times_taken_back;
  }
  return installation.next++;
}

const PasswordSettings& Installations::password_settings(QLCConn& conn) {
  PasswordSettings& settings = installations_[conn.ConnectionString()].passwords;
  if (settings.rounds == 0) {
    const RecordsetPtr row =
        conn.AbrirRecordset("select sal, rodadas from instalacao where oid = 1", CursorType::ForwardOnly,
                            LockType::ReadOnly, CursorLocation::Server, 0);
    require_row(row);
    settings = {to_text(row->value(0)), to_int32(row->value(1))};
    row->Close();
  }
  return settings;
}

}  // namespace pradelis::dataaccess
