#include <string>

#include "component/crm.h"
#include "component/integer16.h"
#include "component/recordsets.h"
#include "values/text.h"

namespace pradelis::component {

Variant CRM::ApagarClasseProduto(const Variant& negocio) {
  return reporting("ApagarClasseProduto", [&] {
    execute(concat("delete from CRM_CLASSEPRODUTOS_NEGOCIO where rnegocio = ", negocio));
    return Variant("0");
  });
}

Variant CRM::CadastrarClasseProduto(const std::string& classeProduto, const Variant& negocio) {
  return reporting("CadastrarClasseProduto", [&] {
    working_ = open_updatable("select * from CRM_CLASSEPRODUTOS_NEGOCIO where 1=1");
    working_->AddNew();
    working_->set("rClasseProduto", classeProduto);
    working_->set("rNegocio", negocio);
    working_->Update();
    working_->Close();
    return Variant();
  });
}

void CRM::add_product_classes(const std::string& classes, const Variant& negocio) {
  const auto pieces = split(classes, ',');
  require_int16_count(pieces.size());
  for (const std::string_view piece : pieces) CadastrarClasseProduto(std::string(trim(piece)), negocio);
}

}  // namespace pradelis::component
