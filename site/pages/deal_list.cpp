#include "site/context.h"
#include "site/csv.h"
#include "site/deal_data.h"
#include "site/identifiers.h"
#include "site/pager.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/still_deals.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// One way to look at the deals: which states, and sorted how.
struct Tab {
  const char* name;
  const char* text;
  DealStates states;
  Order order;
  const char* value_column;
};

// Deals without an expected date come last.
const Order by_expected_date = {"isnull(n.dataprovavel, '99991231')", "n.oid",
                                "select isnull(dataprovavel, '99991231') from crm_pos_negocio where oid = "};
const Order by_closing_date = {"n.fechamento", "n.oid",
                               "select fechamento from crm_pos_negocio where oid = ", true};
const Order newest_first = {"n.oid", "n.oid", "select oid from crm_pos_negocio where oid = ", true};

const std::vector<Tab>& tabs() {
  static const std::vector<Tab> all = {
      {"abertos", "Abertos", {true, false, false}, by_expected_date, "valorprovavel"},
      {"fechados", "Fechados", {false, true, false}, by_closing_date, "valorfechamento"},
      {"perdidos", "Perdidos", {false, false, true}, by_closing_date, "valorprovavel"},
      {"todos", "Todos", {true, true, true}, newest_first, "valorprovavel"},
  };
  return all;
}

const Tab& asked_tab(const Request& request) {
  for (const Tab& tab : tabs()) {
    if (request.query.get("estado") == tab.name) return tab;
  }
  return tabs().front();
}

std::string list_condition(Context& context, const Tab& tab, std::int32_t salesperson) {
  std::string condition = concat(" where n.oid in (", context.visible().deals(tab.states), ")");
  if (salesperson != 0) condition += concat(" and n.rvendedor = ", salesperson);
  if (const std::string search(trim(context.request().query.get("busca"))); !search.empty()) {
    const std::string like = concat(" like UPPER('", like_anywhere(context.crm(), search), "') escape '!'");
    condition += concat(" and (UPPER(i.nome)", like, " or UPPER(c.nome)", like, ")");
  }
  return condition;
}

View filter_view(Context& context, const Tab& asked, std::int32_t salesperson) {
  const std::string filters = context.request().query.encode_without({"estado", "apos", "antes"});
  std::vector<View> tab_views;
  for (const Tab& tab : tabs()) {
    std::string address =
        std::string("/negocios?estado=") + tab.name + (filters.empty() ? "" : "&" + filters);
    tab_views.push_back(View().set("address", address).set("text", tab.text).flag("here", &tab == &asked));
  }
  auto people = salesperson_views(context, salesperson);
  View view;
  view.list("tabs", std::move(tab_views)).set("asked", asked.name);
  view.set("search", context.request().query.get("busca"));
  view.flag("team", people.size() > 1).list("people", std::move(people));
  return view;
}

void list(Context& context) {
  const Tab& tab = asked_tab(context.request());
  Pager pager(context.request(), tab.order);
  if (pager.from() != 0) context.visible().require_deal(pager.from());
  const std::int32_t salesperson = parse_identifier(context.request().query.get("vendedor")).value_or(0);
  const std::string condition = list_condition(context, tab, salesperson);

  std::vector<std::pair<std::int32_t, View>> rows;
  each_row(context.crm(),
           concat("select ", deal_columns, deal_sources, condition, pager.condition(), pager.ordering()),
           Pager::limit(), [&](const Row& row) { rows.emplace_back(row.id(0), deal_entry(row)); });
  pager.arrange(rows);
  mark_still(context, rows);

  View view = filter_view(context, tab, salesperson);
  each_row(context.crm(), concat("select count(*), sum(n.", tab.value_column, ")", deal_sources, condition),
           1, [&](const Row& row) {
             view.set("count", count_text(to_int64(row.value(0)), "negócio", "negócios"));
             view.set("sum", money_text(row.number(1)));
           });
  const std::string filters = context.request().query.encode_without({"apos", "antes"});
  view.set("export", "/negocios/exportar" + (filters.empty() ? "" : "?" + filters));
  view.flag("none", rows.empty())
      .flag("filtered", salesperson != 0 || !context.request().query.get("busca").empty());
  if (!rows.empty()) view.section("pager", pager.view(rows.front().first, rows.back().first));
  std::vector<View> views;
  for (auto& [id, entry] : rows) views.push_back(std::move(entry));
  view.list("deals", std::move(views));
  context.show("deals", "Negócios", "negocios", std::move(view));
}

/// The deals of the list, all pages of it.
void export_list(Context& context) {
  const Tab& tab = asked_tab(context.request());
  const std::int32_t salesperson = parse_identifier(context.request().query.get("vendedor")).value_or(0);
  CsvWriter csv;
  for (const char* heading :
       {"Negócio", "Empresa", "Contato", "Vendedor", "Estado", "Cadastrado em", "Fechamento previsto",
        "Valor previsto", "Encerrado em", "Valor fechado", "Motivo da perda", "Observação"}) {
    csv.text(heading);
  }
  csv.end_row();
  const std::string sql = concat(
      "select i.nome, c.nome, k.nome, v.nome, n.fechamento, n.rmotivo, i.criadoem, n.dataprovavel,"
      " n.valorprovavel, n.valorfechamento, m.nome, i.observacao",
      deal_sources, " left join item k on k.oid = n.rcontato left join item m on m.oid = n.rmotivo",
      list_condition(context, tab, salesperson), " order by ", tab.order.key,
      tab.order.descending ? " desc" : "", ", n.oid");
  each_streamed_row(context.crm(), sql, [&](const Row& row) {
    const Variant closed = row.value(4);
    for (const std::size_t column : {0, 1, 2}) csv.text(row.text(column));
    csv.text(row.component_text(3));
    csv.text(state_text(deal_state(closed, row.value(5)))).day(row.value(6)).day(row.value(7));
    csv.amount(row.value(8)).day(closed).amount(row.value(9)).text(row.text(10)).text(row.text(11));
    csv.end_row();
  });
  context.send_csv("negocios", csv.take());
}

}  // namespace

void add_deal_list(Router& router) {
  router.get("/negocios", list);
  router.get("/negocios/exportar", export_list);
}

}  // namespace pradelis::site
