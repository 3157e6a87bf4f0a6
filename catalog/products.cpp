#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

Variant CRM::Cadastrar_Produto(const Variant& NOME) {
  return reporting("Cadastrar_Produto", rs, [&] {
    rs = open_forward_only("Select (isnull(max(oid),0) + 1) as OID from crm_produtos");
    const std::int32_t oid = to_int32(rs->value("oid"));
    rs->Close();

    Variant result = "Já existe um produto com esse nome";
    rs = open_updatable(concat("select * from crm_produtos where nome='", PrepararVariavel(NOME), "'"));
    if (rs->Eof()) {
      rs->AddNew();
      rs->set("oid", oid);
      rs->set("nome", NOME);
      rs->Update();
      result = std::int16_t{0};
    }
    rs->Close();
    return result;
  });
}

Variant CRM::Alterar_Produto(const Variant& NOME, const Variant& OID) {
  return reporting("Alterar_Produto", rs, [&] {
    rs = open_updatable(concat("Select nome from crm_produtos where oid=", OID));
    rs->set("nome", NOME);
    rs->Update();
    release(rs);
    return Variant("0");
  });
}

Variant CRM::Excluir_Produto(const Variant& OID) {
  return reporting("Excluir_Produto", [&] {
    execute(concat("Delete from crm_produtos where oid = ", OID));
    execute(concat("Update crm_pos_negocio set rproduto = null where rproduto = ", OID));
    return Variant("0");
  });
}

}  // namespace pradelis::component
