#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"

namespace pradelis::component {

std::string CRM::Cadastrar_Classificacao(const Variant& RELACIONADO, const Variant& CATEGORIA) {
  return reporting("Cadastrar_Classificacao", rs, [&] {
    rs = open_table("classificacao");
    rs->AddNew();
    rs->set("ritem", RELACIONADO);
    rs->set("rcategoria", CATEGORIA);
    rs->set("OID", shared_base().NovoOid());
    rs->Update();
    release(rs);
    return std::string("0");
  });
}

}  // namespace pradelis::component
