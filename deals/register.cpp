#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/text.h"

namespace pradelis::component {

namespace {
constexpr std::int32_t deal_class = 16075;
}

Variant CRM::Cadastrar_Negocio(std::int32_t RPESSOA, std::int32_t rContato, std::int32_t Vendedor,
                               const std::string& DATAPROVAVEL, const std::string& codClasseProdutos,
                               std::int32_t rIndicador, const std::string& Observacao,
                               const std::string& NOME, double ValorProvavel, std::int16_t& nErro) {
  nErro = 1;
  working_ =
      open_snapshot(concat("select * from crm_pos_negocio where rpessoa=", RPESSOA,
                           " and oid in (select oid from item where nome='", PrepararVariavel(NOME), "')"));
  if (!working_->Eof()) return "Já existe um Negócio dessa Empresa com esse Nome";
  working_->Close();

  nErro = 2;
  const std::int32_t oid = shared_base().IncluirItem(Vendedor, NOME, deal_class, 7, 7, Variant::missing(),
                                                     Variant::missing(), Vendedor, Observacao, "", 0);
  // The message says "contato" for a deal as well; pages know it so.
  if (oid <= 0) return concat("Erro ao gerar OID do contato", oid);

  nErro = 3;
  working_ = open_table("crm_pos_negocio");
  working_->AddNew();
  working_->set("rPessoa", RPESSOA);
  working_->set("rContato", rContato);
  working_->set("rVendedor", Vendedor);
  if (!DATAPROVAVEL.empty()) working_->set("DataProvavel", DATAPROVAVEL);
  working_->set("ValorProvavel", ValorProvavel);
  working_->set("rIndicador", rIndicador != 0 ? Variant(rIndicador) : Variant::null());
  working_->set("Oid", oid);

  nErro = 4;
  working_->Update();
  release(working_);

  nErro = 5;
  add_product_classes(codClasseProdutos, oid);
  return oid;
}

}  // namespace pradelis::component
