#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {
constexpr std::int32_t city_class = 19;
}

Variant CRM::Cadastrar_Cidade(const Variant& RPROVINCIA, const Variant& DDD, const std::string& Observacao,
                              const Variant& NOME, const Variant& CRIADOPOR) {
  return reporting("Cadastrar_Cidade", rs, [&]() -> Variant {
    rs = open_updatable(
        concat("select item.oid from item, cidade where item.oid=cidade.oid and UPPER(item.nome)=UPPER('",
               PrepararVariavel(NOME), "')"));
    const bool taken = !rs->Eof();
    close_if_open(rs);
    if (taken) return "Já existe uma cidade com esse nome";

    const std::int32_t oid =
        shared_base().IncluirItem(to_int32(CRIADOPOR), to_text(NOME), city_class, 7, 7, Variant::missing(),
                                  Variant::missing(), true, Observacao, "", 0);
    rs = open_table("cidade");
    rs->AddNew();
    rs->set("oid", oid);
    rs->set("rprovincia", RPROVINCIA);
    rs->set("DDD", DDD);
    rs->Update();
    close_if_open(rs);
    return std::int16_t{0};
  });
}

}  // namespace pradelis::component
