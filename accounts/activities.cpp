#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

constexpr std::int32_t activity_class = 16202;

/// The plan for the next step; what the page leaves empty is stored as null.
void plan_next(dataaccess::Recordset& activity, const Variant& when, const Variant& kind,
               const Variant& salesperson) {
  const auto or_null = [](const Variant& value) { return value.is_empty() ? Variant::null() : value; };
  activity.set("PROXIMOCONTATO", or_null(when));
  activity.set("RPROXIMAATIVIDADE", or_null(kind));
  activity.set("RPROXIMOVENDEDOR", or_null(salesperson));
}

}  // namespace

Variant CRM::Cadastrar_Atividade(std::int32_t RPESSOA, std::int32_t RNEGOCIOPOSSIVEL, std::int32_t RATIVIDADE,
                                 std::int32_t rVendedor, std::int32_t rContato, const Variant& DATA,
                                 const std::string& Observacao, const Variant& PROXIMOCONTATO,
                                 const Variant& RPROXIMAATIVIDADE, const Variant& CRIADOEM,
                                 const Variant& NOME, const Variant& RPROXIMOVENDEDOR) {
  return reporting("Cadastrar_Atividade", rs, [&] {
    const std::int32_t oid = shared_base().IncluirItem(rVendedor, to_text(NOME), activity_class, 7, 7,
                                                       CRIADOEM, Variant::missing(), rVendedor, "", "", 0);
    rs = open_table("crm_atividade");
    rs->AddNew();
    rs->set("RPESSOA", RPESSOA);
    rs->set("RNEGOCIOPOSSIVEL", RNEGOCIOPOSSIVEL);
    rs->set("RATIVIDADE", RATIVIDADE);
    rs->set("RVENDEDOR", rVendedor);
    rs->set("RCONTATO", rContato);
    rs->set("DATA", DATA);
    rs->set("OBSERVACAO", Observacao);
    plan_next(*rs, PROXIMOCONTATO, RPROXIMAATIVIDADE, RPROXIMOVENDEDOR);
    rs->set("OID", oid);
    rs->Update();
    release(rs);
    return Variant(std::int16_t{0});
  });
}

Variant CRM::Alterar_Atividade(std::int32_t RPESSOA, std::int32_t RNEGOCIOPOSSIVEL,
                               std::int32_t /*rVendedor*/, std::int32_t rContato, const Variant& DATA,
                               const Variant& PROXIMOCONTATO, std::int32_t OIDATIVIDADE,
                               const std::string& Observacao, std::int32_t ATIVIDADE,
                               const Variant& RPROXIMAATIVIDADE, const Variant& RPROXIMOVENDEDOR) {
  return reporting("Alterar_Atividade", rs, [&] {
    rs = open_updatable(concat("SELECT * FROM crm_atividade WHERE OID =", OIDATIVIDADE));
    rs->set("RPESSOA", RPESSOA);
    rs->set("RNEGOCIOPOSSIVEL", RNEGOCIOPOSSIVEL);
    rs->set("RCONTATO", rContato);
    rs->set("DATA", DATA);
    rs->set("OBSERVACAO", Observacao);
    plan_next(*rs, PROXIMOCONTATO, RPROXIMAATIVIDADE, RPROXIMOVENDEDOR);
    rs->set("RATIVIDADE", ATIVIDADE);
    rs->Update();
    release(rs);
    return Variant(std::int16_t{0});
  });
}

}  // namespace pradelis::component
