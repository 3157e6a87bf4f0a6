#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

constexpr std::int32_t person_class = 45;
constexpr std::int32_t contact_category = 1000;

[[noreturn]] void refuse_contact(const std::string& message) {
  RaiseError(error_number::business_refusal, "Pradelis.CRM.Cadastrar_Contato", message);
}

}  // namespace

std::string CRM::Cadastrar_Contato(std::int32_t Vendedor, const Variant& NOMECONTATO, std::int32_t CARGO,
                                   std::int32_t Empresa) {
  return reporting("Cadastrar_Contato", rs, [&] {
    dataaccess::QLCBase& base = shared_base();
    // User 1 creates contacts; the salesperson is the responsible one.
    const std::int32_t oid = base.IncluirItem(1, to_text(NOMECONTATO), person_class, 7, 7, Variant::missing(),
                                              Variant::missing(), Vendedor, "", "", 0);
    rs = open_table("pessoa");
    rs->AddNew();
    rs->set("razaosocial", "");
    rs->set("OID", oid);
    rs->Update();
    rs->Close();
    execute(concat("insert into pessoafisica (oid) values(", oid, ")"));

    if (!base.ClassificarItem(oid, contact_category)) {
      refuse_contact("Falha ao cadastrar a classificação do contato");
    }
    if (!base.IncluirAgrupamento(CARGO, Empresa, oid)) {
      refuse_contact("Falha ao cadastrar o agrupamento do contato");
    }
    rs.reset();
    return to_text(oid);
  });
}

std::string CRM::Alterar_Contato(const Variant& OID, const Variant& Vendedor, const Variant& NOMECONTATO,
                                 const Variant& CARGO, const Variant& Empresa) {
  return reporting("Alterar_Contato", rs, [&] {
    shared_base().AlterarItem(to_int32(OID), to_int32(Vendedor), NOMECONTATO, Variant::missing(),
                              Variant::missing(), Variant::missing(), Variant::missing());
    rs = open_updatable(concat("select * from agrupamento where ritem = ", OID, "  and rgrupo= ", Empresa));
    rs->set("rpapel", CARGO);
    rs->Update();
    release(rs);
    return std::string("0");
  });
}

}  // namespace pradelis::component
