#include <cstdint>

#include "component/crm.h"
#include "component/recordsets.h"

namespace pradelis::component {

Variant CRM::Excluir(const Variant& NOME, const Variant& CODIGO, std::int32_t EXCLUIDOPOR, Date EXCLUIDOEM,
                     std::int32_t RAPLICATIVO, std::int32_t CID, std::int32_t OID) {
  return reporting("Excluir", rs, [&] {
    rs = open_table("EXCLUIDO");
    rs->AddNew();
    rs->set("NOME", NOME);
    rs->set("CODIGO", CODIGO);
    rs->set("EXCLUIDOPOR", EXCLUIDOPOR);
    rs->set("EXCLUIDOEM", EXCLUIDOEM);
    rs->set("RAPLICATIVO", RAPLICATIVO);
    rs->set("CID", CID);
    rs->set("OID", OID);
    rs->Update();
    release(rs);
    return Variant(std::int16_t{0});
  });
}

}  // namespace pradelis::component
