#include "site/deal_data.h"

#include "values/clock.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

std::vector<Option> read_classes(Context& context, std::int32_t deal) {
  std::vector<Option> classes;
  each_row(context.crm(),
           concat("select k.rclasseproduto, i.nome from crm_classeprodutos_negocio k join item i"
                  " on i.oid = k.rclasseproduto where k.rnegocio = ",
                  deal, " order by i.nome"),
           0, [&](const Row& row) {
             classes.push_back({row.id(0), row.text(1)});
           });
  return classes;
}

}  // namespace

const char* const deal_columns =
    "n.oid, i.nome, c.nome, v.nome, n.dataprovavel, n.valorprovavel, n.fechamento, n.valorfechamento,"
    " n.rmotivo";
const char* const deal_sources =
    " from crm_pos_negocio n join item_r i on i.oid = n.oid left join item c on c.oid = n.rpessoa"
    " left join item v on v.oid = n.rvendedor";

DealState deal_state(const Variant& closing_date, const Variant& loss_reason) {
  if (closing_date.is_null()) return DealState::Open;
  return loss_reason.is_null() ? DealState::Won : DealState::Lost;
}

Deal read_deal(Context& context, std::int32_t id) {
  context.visible().require_deal(id);
  Deal deal;
  each_row(
      context.crm(),
      concat("select i.nome, i.observacao, n.rpessoa, n.rcontato, n.rvendedor, n.rindicador, c.nome, k.nome,"
             " v.nome, d.nome, m.nome, n.dataprovavel, n.fechamento, n.valorprovavel, n.valorfechamento,"
             " i.criadoem, n.rmotivo",
             deal_sources,
             " left join item k on k.oid = n.rcontato left join item d on d.oid = n.rindicador"
             " left join item m on m.oid = n.rmotivo where n.oid = ",
             id),
      1, [&](const Row& row) {
        deal.id = id;
        deal.name = row.text(0);
        deal.note = row.text(1);
        deal.company = row.id(2);
        deal.contact = row.id(3);
        deal.salesperson = row.id(4);
        deal.indicator = row.id(5);
        deal.company_name = row.text(6);
        deal.contact_name = deal.contact == 0 ? std::string() : row.text(7);
        deal.salesperson_name = row.component_text(8);
        deal.indicator_name = row.text(9);
        deal.loss_reason = row.text(10);
        deal.expected = row.date(11);
        deal.closed = row.date(12);
        deal.expected_value = row.number(13);
        if (!row.value(14).is_null()) deal.closing_value = row.number(14);
        deal.registered = day_text(row.value(15));
        deal.state = deal_state(row.value(12), row.value(16));
      });
  deal.classes = read_classes(context, id);
  return deal;
}

std::string deal_address(std::int32_t deal) { return "/negocios/" + std::to_string(deal); }

std::vector<Link> deal_trail(const Deal& deal) {
  return {{"/negocios", "Negócios"}, {deal_address(deal.id), deal.name}};
}

const char* state_text(DealState state) {
  switch (state) {
    case DealState::Open:
      return "Aberto";
    case DealState::Won:
      return "Fechado";
    default:
      return "Perdido";
  }
}

View state_view(DealState state) {
  View view;
  view.set("state", state_text(state));
  return view.set("colour", state == DealState::Open ? "open" : state == DealState::Won ? "won" : "lost");
}

View deal_entry(const Row& row) {
  const DealState state = deal_state(row.value(6), row.value(8));
  View view = state_view(state);
  view.set("address", deal_address(row.id(0))).set("name", row.text(1)).set("company", row.text(2));
  view.set("salesperson", row.component_text(3));
  view.set("value", money_text(row.value(state == DealState::Won ? 7 : 5)));
  const Variant date = row.value(state == DealState::Open ? 4 : 6);
  view.set("date", day_text(date)).optional("distance", date.is_null() ? "" : distance_text(to_date(date)));
  view.flag("due",
            state == DealState::Open && !date.is_null() && day_number(to_date(date)) < day_number(today()));
  return view;
}

std::vector<View> salesperson_views(Context& context, std::int32_t chosen) {
  std::vector<View> people;
  for (const Option& person : context.visible().salespeople()) {
    View view;
    view.set("id", std::to_string(person.id)).set("name", person.label).flag("chosen", person.id == chosen);
    people.push_back(std::move(view));
  }
  return people;
}

}  // namespace pradelis::site
