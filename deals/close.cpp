#include <cstdint>

#include "component/crm.h"
#include "component/recordsets.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

Variant CRM::Fechar_Negocio(const Variant& DATAFECHAMENTO, const Variant& oidNegocio) {
  return reporting("Fechar_Negocio", [&] {
    working_ = open_updatable(concat("Select * from crm_pos_negocio where oid = ", oidNegocio));
    working_->set("Fechamento", DATAFECHAMENTO);
    working_->Update();
    release(working_);
    return Variant("0");
  });
}

Variant CRM::Perder_Negocio(const Variant& DATAFECHAMENTO, std::int32_t RMOTIVO, const Variant& Observacao,
                            std::int32_t oidNegocio) {
  return reporting("Perder_Negocio", rs2, [&] {
    rs2 = open_updatable(concat("Select * from crm_pos_negocio where oid = ", oidNegocio));
    rs2->set("fechamento", DATAFECHAMENTO);
    rs2->set("rMotivo", RMOTIVO);
    rs2->Update();
    rs2->Close();

    rs2 = open_updatable(concat("Select observacao from item where oid = ", oidNegocio));
    rs2->set("observacao", Observacao);
    rs2->Update();
    release(rs2);
    return Variant("0");
  });
}

Variant CRM::Estornar_Negocio(const Variant& oidNegocio) {
  return reporting("Estornar_Negocio", rs2, [&] {
    rs2 = open_updatable(concat("Select * from crm_pos_negocio where oid = ", oidNegocio));
    to_int32(rs2->value("rPessoa"));  // a deal without company is refused
    rs2->set("Fechamento", Variant::null());
    rs2->set("rMotivo", Variant::null());
    rs2->Update();
    rs2->Close();
    return Variant("0");
  });
}

}  // namespace pradelis::component
