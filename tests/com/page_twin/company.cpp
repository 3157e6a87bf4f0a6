#include "tests/com/page_twin/frame.h"

namespace pradelis::test {
namespace {

constexpr std::int32_t class_company = 46;

void read_company(component::CRM& crm, std::int32_t company) {
  crm.Executar(concat(
      "select j.nome, p.razaosocial, j.observacao, e.rua, e.numero, e.complemento, e.bairro, e.cep, e.rcidade"
      " from pessoajuridica_r j join pessoa p on p.oid = j.oid"
      " left join endereco e on e.oid = (select min(oid) from endereco where ritem = j.oid) where j.oid = ",
      company, " and j.oid in (", crm.String_Empresa_Vendedor(), ")"));
}

void store_extra_fields(const TwinPage& page, component::CRM& crm, std::int32_t company) {
  constexpr std::int32_t reference = 2;
  const std::int32_t total = identifier(page.field("ADITIVO_TOTAL"));
  for (std::int32_t n = 1; n <= total; ++n) {
    const std::int32_t field = identifier(page.field(concat("ADITIVO_DEFINICAO", n)));
    crm.Executar2(concat("select rtipo from dadoadicional where visivel = 1 and ritem = ", class_company,
                         " and oid = ", field));
    if (crm.rs2->Eof()) continue;
    Variant value = page.field(concat("ADITIVO_VALOR", n));
    if (to_int32(crm.rs2->value("rtipo")) == reference) value = identifier(to_text(value));
    if (to_text(value).empty()) value = Variant::null();
    crm.Alterar_Aditivo(company, field, value);
  }
}

std::string store(const TwinPage& page, const Visitor& visitor, component::CRM& crm, std::int32_t company) {
  Variant written_back = company;
  return failure_of([&] {
    crm.Alterar_Empresa(written_back, page.field("razaosocial"), visitor.element(0), page.field("observacao"),
                        page.field("nome"), identifier(page.field("cidade")), page.field("cep"),
                        page.field("bairro"), page.field("complemento"), page.field("numero"),
                        page.field("rua"));
    store_extra_fields(page, crm, company);
  });
}

}  // namespace

void serve_company(TwinPage& page, Visitor& visitor, component::CRM& crm) {
  const std::int32_t company = identifier(page.parameter("oid"));
  page.text(0);
  read_company(crm, company);
  if (crm.rs->Eof()) {
    page.set_status("404 Not Found");
    begin(page, visitor, "Esta empresa não existe");
    return end(page);
  }
  std::string failure;
  if (page.receives_form()) {
    failure = store(page, visitor, crm, company);
    read_company(crm, company);
  }
  const auto value = [&](const char* column) { return crm.rs->value(column); };
  begin(page, visitor, value("nome"));
  warn(page, failure);
  if (page.receives_form() && failure.empty()) page.text(1).write("Gravado.").text(2);
  page.text(3).write(company).text(4).escaped(value("nome")).text(5).escaped(value("razaosocial"));
  page.text(6).escaped(value("rua")).text(7).escaped(value("numero")).text(8).escaped(value("complemento"));
  page.text(9).escaped(value("bairro")).text(10).escaped(value("cep")).text(11);
  options(page, crm, "select oid, nome from item_r where cid = 19 order by nome, oid", value("rcidade"));
  page.text(12).escaped(value("observacao")).text(13);
  crm.Aditivo_Escrever_Item(class_company, 1, company, "class=\"extra\"");
  page.take_component().text(14);
  end(page);
  page.text(15);
}

}  // namespace pradelis::test
