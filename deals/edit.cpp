#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "values/text.h"

namespace pradelis::component {

std::string CRM::Alterar_Negocio(const Variant& oidNegocio, std::int32_t rContato, std::int32_t /*Vendedor*/,
                                 const std::string& DATAPROVAVEL, const std::string& codClasseProdutos,
                                 std::int32_t rIndicador, const std::string& Observacao, double ValorProvavel,
                                 std::int16_t& nErro) {
  // Pages know this method's failures by the short name.
  return reporting("Alterar_Neg", [&] {
    nErro = 2;
    working_ = open_updatable(concat("Select * from crm_pos_negocio where oid = ", oidNegocio));
    nErro = 3;
    working_->set("rContato", rContato);
    working_->set("DataProvavel", DATAPROVAVEL);
    working_->set("ValorProvavel", ValorProvavel);
    nErro = 4;
    working_->set("rIndicador", rIndicador != 0 ? Variant(rIndicador) : Variant::null());
    nErro = 5;
    working_->Update();
    working_->Close();
    nErro = 6;
    if (!Observacao.empty()) {
      working_ = open_updatable(concat("select observacao from item where oid=", oidNegocio));
      working_->set("observacao", Observacao);
      working_->Update();
      working_->Close();
    }
    nErro = 7;
    release(working_);
    nErro = 8;
    ApagarClasseProduto(oidNegocio);
    add_product_classes(codClasseProdutos, oidNegocio);
    nErro = 9;
    return std::string("0");
  });
}

Variant CRM::Alterar_Vendedor_Negocio(const Variant& NOVOVENDEDOR, const Variant& oidNegocio) {
  return reporting("Alterar_Vendedor_Negocio", [&] {
    execute(concat("Update crm_pos_negocio Set rVendedor=", NOVOVENDEDOR, "  where oid = ", oidNegocio));
    return Variant("0");
  });
}

}  // namespace pradelis::component
