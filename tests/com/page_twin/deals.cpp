#include "tests/com/page_twin/frame.h"

namespace pradelis::test {
namespace {

constexpr const char* deal_columns =
    "select n.oid, i.nome, c.nome as empresa, n.rpessoa, v.nome as vendedor, n.dataprovavel, n.valorprovavel,"
    " n.fechamento, n.rmotivo from crm_pos_negocio n join item_r i on i.oid = n.oid"
    " left join item c on c.oid = n.rpessoa left join item v on v.oid = n.rvendedor where n.oid in (";

Variant state_of(component::CRM& crm, dataaccess::Recordset& row) {
  const Variant expected = row.value("dataprovavel");
  if (expected.is_null()) return crm.Negocio_Status(to_int32(row.value("oid")));
  return day(crm.Fechamento_Previsto(row.value("fechamento"), to_date(expected), row.value("rmotivo")));
}

struct NewDeal {
  std::int32_t company;
  std::string name, expected, value, note, classes;
};

/// Registers a deal. `number` receives its identifier; the result says why there is none.
std::string register_deal(component::CRM& crm, const Visitor& visitor, const NewDeal& deal, Variant& number) {
  std::int16_t step = 0;
  Variant result;
  Variant value = deal.value;
  const std::string failure = failure_of([&] {
    const double amount = to_double(crm.FormataNumero(value));
    result = crm.Cadastrar_Negocio(deal.company, 0, to_int32(visitor.element(0)), deal.expected, deal.classes,
                                   0, deal.note, deal.name, amount, step);
  });
  if (!failure.empty()) return concat(failure, " (passo ", step, ")");
  if (!is_numeric(result)) return to_text(result);
  number = result;
  return {};
}

}  // namespace

void serve_deals(TwinPage& page, Visitor& visitor, component::CRM& crm) {
  const std::string state = page.parameter("estado");
  std::int32_t salesperson = identifier(page.parameter("vendedor"));
  if (!crm.VerificaSubordinado(salesperson)) salesperson = 0;
  const std::string selection =
      crm.String_Negocio_Vendedor(salesperson, Variant::null(), state.empty() || state == "aberto",
                                  state == "fechado", state == "perdido");
  crm.Executar(concat(deal_columns, selection, ") order by n.dataprovavel, i.nome, n.oid"));
  page.text(0);
  begin(page, visitor, "Negócios");
  page.text(1);
  double total = 0;
  std::int32_t count = 0;
  for (dataaccess::Recordset& row = *crm.rs; !row.Eof(); row.MoveNext()) {
    const Variant value = row.value("valorprovavel");
    if (!value.is_null()) total += to_double(value);
    ++count;
    page.text(2).escaped(row.value("nome")).text(3).write(row.value("rpessoa"));
    page.text(4).escaped(row.value("empresa")).text(5).escaped(row.value("vendedor"));
    page.text(6).escaped(state_of(crm, row)).text(7).escaped(crm.Diadecorrido(row.value("oid")));
    page.text(8).write(money(crm, value)).text(9);
  }
  page.text(10).write(count).text(11).write(money(crm, total)).text(12);
  end(page);
  page.text(13);
}

void serve_new_deal(TwinPage& page, Visitor& visitor, component::CRM& crm) {
  const std::string companies =
      concat("select oid, nome from pessoajuridica_r where oid in (", crm.String_Empresa_Vendedor(), ")");
  const NewDeal deal{identifier(page.field("empresa")),
                     page.field("nome"),
                     page.field("previsto"),
                     page.field("valor"),
                     page.field("observacao"),
                     identifiers(value_of(page.request().form, "classe"))};
  Variant number;
  std::string failure;
  if (page.receives_form()) {
    crm.Executar(concat(companies, " and oid = ", deal.company));
    if (crm.rs->Eof()) {
      failure = "Escolha a empresa.";
    } else if (deal.name.empty()) {
      failure = "Dê um nome ao negócio.";
    } else {
      failure = register_deal(crm, visitor, deal, number);
    }
  }
  page.text(0);
  begin(page, visitor, "Novo negócio");
  warn(page, failure);
  if (!number.is_empty()) page.text(1).escaped(deal.name).text(2).write(number).text(3);
  page.text(4);
  options(page, crm, companies + " order by nome, oid", deal.company);
  page.text(5).escaped(deal.name).text(6).escaped(deal.expected).text(7).escaped(deal.value).text(8);
  crm.Executar("select oid, nome from categoria_r where rsuper = 2203 order by nome, oid");
  for (dataaccess::Recordset& row = *crm.rs; !row.Eof(); row.MoveNext()) {
    const Variant id = row.value("oid");
    page.text(9).write(id).text(10);
    const bool chosen = ("," + deal.classes + ",").find(concat(",", id, ",")) != std::string::npos;
    if (chosen) page.write(" checked");
    page.text(11).escaped(row.value("nome")).text(12);
  }
  page.text(13).escaped(deal.note).text(14);
  end(page);
  page.text(15);
}

}  // namespace pradelis::test
