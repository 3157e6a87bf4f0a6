#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

/// The extra field whose values are texts whatever its type.
constexpr std::string_view always_text = "16353";

std::string without_blanks(std::string_view text) { return replace_all(text, " ", ""); }

bool is_reference(std::string_view column) { return to_upper(without_blanks(column)) == "NVALOR"; }

std::string no_such_field(const Variant& definition) {
  return concat("ERRO : O Aditivo de oid ", definition, " não existe mais");
}

/// The name of a referenced object; empty when there is no such object.
std::string name_of(dataaccess::RecordsetPtr& item, const Variant& oid) {
  item = open_snapshot(concat("SELECT nome FROM item WHERE oid = ", oid));
  std::string name = item->Eof() ? std::string() : concat(item->value("nome"));
  item->Close();
  return name;
}

}  // namespace

std::string CRM::value_column(const std::string& definicao, const Variant& rtipo) {
  if (without_blanks(definicao) == always_text) return "svalor";
  return shared_base().ColunaDoTipo(to_int32(rtipo));
}

std::string CRM::Alterar_Aditivo(const Variant& RELACIONADO, const Variant& Definicao, const Variant& valor,
                                 bool CRIAR_SE_NAO_HOUVER) {
  return reporting("Alterar_Aditivo", [&]() -> std::string {
    working_ = open_snapshot(concat("select rtipo from dadoadicional where oid=", Definicao));
    if (working_->Eof()) {
      release(working_);
      return no_such_field(Definicao);
    }
    const std::string column = value_column(concat(Definicao), working_->value("rtipo"));
    working_->Close();
    const bool reference = is_reference(column);
    const std::string referenced_name = reference ? name_of(working_, valor) : std::string();

    working_ = open_updatable(
        concat("select * from aditivo where ritem=", RELACIONADO, " and rdefinicao=", Definicao));
    if (working_->Eof()) {
      if (!CRIAR_SE_NAO_HOUVER) {
        release(working_);
        return "A propriedade que define se cria o aditivo se não houver, foi configurada como falsa e não "
               "havia este aditivo cadastrado para o Item.";
      }
      working_->AddNew();
      working_->set("oid", shared_base().NovoOid());
    }
    for (const std::string_view each : {"LSVALOR", "svalor", "DTVALOR", "NVALOR"}) {
      working_->set(each, Variant::null());
    }
    working_->set("ritem", RELACIONADO);
    working_->set("rdefinicao", Definicao);
    working_->set(column, valor);
    if (reference) working_->set("svalor", referenced_name);
    working_->Update();
    release(working_);
    return "0";
  });
}

std::string CRM::Aditivo_Ver(std::int32_t RELACIONADO, std::int32_t Definicao) {
  return reporting("Aditivo_Ver", [&] {
    working_ = open_snapshot(concat("select rtipo from dadoadicional where oid=", Definicao));
    if (working_->Eof()) return no_such_field(Definicao);
    const std::string column = value_column(to_text(Definicao), working_->value("rtipo"));
    working_->Close();

    working_ = open_snapshot(concat("select ", column, " from aditivo where ", column,
                                    " is not null and ritem=", RELACIONADO, " and rdefinicao=", Definicao));
    std::string value = working_->Eof() ? std::string() : to_text(working_->value(column));
    release(working_);
    return value;
  });
}

}  // namespace pradelis::component
