#include "component/crm.h"
#include "component/thread_state.h"
#include "values/convert.h"

namespace pradelis::component {

using dataaccess::CursorLocation;
using dataaccess::CursorType;
using dataaccess::LockType;

Variant CRM::execute_into(dataaccess::RecordsetPtr& slot, std::string_view method, const Variant& sql,
                          CursorType cursor, LockType lock, CursorLocation location,
                          std::int32_t max_records) {
  return component::reporting(
      "Pradelis.CRM.", method,
      [&] {
        slot = shared_conn().AbrirRecordset(to_text(sql), cursor, lock, location, max_records, 1, 10);
        return Variant("0");
      },
      [&slot]() noexcept { slot.reset(); });
}

Variant CRM::Executar(const Variant& sql, CursorType CursorType, LockType LockType,
                      CursorLocation CursorLocation, std::int32_t MaxRecords) {
  return execute_into(rs, "Executar", sql, CursorType, LockType, CursorLocation, MaxRecords);
}

Variant CRM::Executar2(const Variant& sql, CursorType CursorType, LockType LockType,
                       CursorLocation /*CursorLocation*/, std::int32_t MaxRecords) {
  return execute_into(rs2, "Executar2", sql, CursorType, LockType, CursorLocation::Server, MaxRecords);
}

Variant CRM::Executar3(const Variant& sql, CursorType CursorType, LockType LockType,
                       CursorLocation CursorLocation, std::int32_t MaxRecords) {
  return execute_into(rs3, "Executar3", sql, CursorType, LockType, CursorLocation, MaxRecords);
}

Variant CRM::Executar6(const Variant& sql, CursorType CursorType, LockType LockType,
                       CursorLocation CursorLocation, std::int32_t MaxRecords) {
  return execute_into(rs6, "Executar6", sql, CursorType, LockType, CursorLocation, MaxRecords);
}

}  // namespace pradelis::component
