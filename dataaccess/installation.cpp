#include "dataaccess/installation.h"

#include "dataaccess/schema/engine.h"
#include "dataaccess/thread_connection.h"
#include "values/convert.h"
#include "values/error.h"

namespace pradelis::dataaccess {
namespace {

void require_row(const RecordsetPtr& row) {
  if (row->Eof()) raise(error_number::database_failed, "O banco de dados não foi inicializado.");
}

std::int32_t take_block(QLCConn& conn, std::int32_t size) {
  PooledConnection& connection = connection_of(conn);
  const schema::Engine& engine = schema::engine_of(connection.live().connection().dialect());
  const RecordsetPtr row = connection.Execute(engine.take_identifiers(size), nullptr);
  require_row(row);
  const std::int32_t end = to_int32(row->value(0));
  row->Close();
  return end;
}

}  // namespace

std::int32_t Installations::next_oid(QLCConn& conn) {
  Installation& installation = installations_[conn.ConnectionString()];
  if (installation.next == installation.end) {
    installation.end = take_block(conn, block_size);
    installation.next = installation.end - block_size;
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
