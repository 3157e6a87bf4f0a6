#include "component/recordsets.h"

#include "component/thread_state.h"

namespace pradelis::component {

using dataaccess::CursorLocation;
using dataaccess::CursorType;
using dataaccess::LockType;
using dataaccess::RecordsetPtr;

RecordsetPtr open_snapshot(const std::string& sql) {
  return shared_conn().AbrirRecordset(sql, CursorType::Static, LockType::ReadOnly, CursorLocation::Server, 0,
                                      1, 10);
}

RecordsetPtr open_forward_only(const std::string& sql) {
  return shared_conn().AbrirRecordset(sql, CursorType::ForwardOnly, LockType::ReadOnly,
                                      CursorLocation::Server, 0, 1, 10);
}

RecordsetPtr open_updatable(const std::string& sql) {
  return shared_conn().AbrirRecordset(sql, CursorType::Dynamic, LockType::Optimistic, CursorLocation::Server,
                                      0, 1, 10);
}

RecordsetPtr open_table(const std::string& table) {
  return shared_conn().AbrirTabela(table, CursorType::Dynamic, LockType::Optimistic);
}

void execute(const std::string& sql) { shared_conn().Conexao()->Execute(sql); }

void close_if_open(const RecordsetPtr& recordset) {
  if (recordset && recordset->State() == dataaccess::ObjectState::Open) recordset->Close();
}

void release(RecordsetPtr& recordset) {
  close_if_open(recordset);
  recordset.reset();
}

}  // namespace pradelis::component
