#include "site/company_data.h"
#include "site/context.h"
#include "site/deal_data.h"
#include "site/identifiers.h"
#include "site/pager.h"
#include "site/pages/pages.h"
#include "site/reference.h"
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
  std::vector<View> people;
  for (const Option& person : context.visible().salespeople()) {
    people.push_back(View()
                         .set("id", std::to_string(person.id))
                         .set("name", person.label)
                         .flag("chosen", person.id == salesperson));
  }
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

  View view = filter_view(context, tab, salesperson);
  each_row(context.crm(), concat("select count(*), sum(n.", tab.value_column, ")", deal_sources, condition),
           1, [&](const Row& row) {
             view.set("count", count_text(to_int64(row.value(0)), "negócio", "negócios"));
             view.set("sum", money_text(row.number(1)));
           });
  view.flag("none", rows.empty())
      .flag("filtered", salesperson != 0 || !context.request().query.get("busca").empty());
  if (!rows.empty()) view.section("pager", pager.view(rows.front().first, rows.back().first));
  std::vector<View> views;
  for (auto& [id, entry] : rows) views.push_back(std::move(entry));
  view.list("deals", std::move(views));
  context.show("deals", "Negócios", "negocios", std::move(view));
}

/// The form of a new deal, or of `deal`.
Form deal_form(Context& context, std::int32_t company, const Deal* deal) {
  auto contacts = contact_options(context, company);
  auto indicators = contacts;
  auto classes = entries(context.crm(), ReferenceList::ProductClasses);
  if (deal != nullptr) {
    keep_option(contacts, deal->contact, deal->contact_name);
    keep_option(indicators, deal->indicator, deal->indicator_name);
    for (const Option& kept : deal->classes) keep_option(classes, kept.id, kept.label);
  }
  Form form;
  if (deal == nullptr) form.text("nome", "Nome do negócio").required();
  form.date("data", "Fechamento previsto").half();
  form.money("valor", "Valor previsto").required().half();
  form.choice("contato", "Contato", std::move(contacts)).half();
  form.choice("indicador", "Indicado por", std::move(indicators)).half();
  if (deal == nullptr) {
    form.choice("vendedor", "Vendedor", context.visible().salespeople()).required().value(context.person());
  }
  if (!classes.empty()) form.checks("classes", "Classes de produto", std::move(classes));
  auto& note = form.area("observacao", "Observação");
  if (deal != nullptr && !deal->note.empty()) note.hint("Em branco, mantém a observação que já existe.");
  return form;
}

std::string class_list(const Form& form) {
  return form.has("classes") ? join_identifiers(form.ids_of("classes")) : std::string();
}

void show_registration(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Novo negócio", "negocios", "Cadastrar negócio", company_trail(company),
                           "Com " + company.name + "."});
}

void ask_registration(Context& context) {
  const Company company = read_company(context, context.id());
  show_registration(context, deal_form(context, company.id, nullptr), company);
}

void register_deal(Context& context) {
  const Company company = read_company(context, context.id());
  Form form = deal_form(context, company.id, nullptr);
  Variant result;
  const bool done =
      form.read(context.request().form) && attempt(form, [&] {
        std::int16_t step = 0;
        result = context.crm().Cadastrar_Negocio(
            company.id, form.id_of("contato"), form.id_of("vendedor"), form.date_text_of("data"),
            class_list(form), form.id_of("indicador"), form.text_of("observacao"), form.text_of("nome"),
            form.money_of("valor", context.crm()), step);
        if (result.is(VariantType::Text)) form.refuse("nome", result.get<std::string>());
      });
  if (!done) return show_registration(context, form, company);
  context.redirect(deal_address(to_int32(result)), "Negócio cadastrado.");
}

void show_change(Context& context, const Form& form, const Deal& deal) {
  context.show_form(form, {"Alterar negócio", "negocios", "Salvar alterações", deal_trail(deal)});
}

void ask_change(Context& context) {
  const Deal deal = read_deal(context, context.id());
  Form form = deal_form(context, deal.company, &deal);
  if (deal.expected) form.fill("data", *deal.expected);
  form.fill("valor", amount_text(deal.expected_value)).fill("contato", deal.contact);
  form.fill("indicador", deal.indicator).fill("observacao", deal.note);
  std::vector<std::int32_t> classes;
  for (const Option& one : deal.classes) classes.push_back(one.id);
  if (form.has("classes")) form.fill("classes", classes);
  show_change(context, form, deal);
}

void change_deal(Context& context) {
  const Deal deal = read_deal(context, context.id());
  Form form = deal_form(context, deal.company, &deal);
  const bool done = form.read(context.request().form) && attempt(form, [&] {
                      std::int16_t step = 0;
                      context.crm().Alterar_Negocio(deal.id, form.id_of("contato"), deal.salesperson,
                                                    form.date_text_of("data"), class_list(form),
                                                    form.id_of("indicador"), form.text_of("observacao"),
                                                    form.money_of("valor", context.crm()), step);
                    });
  if (!done) return show_change(context, form, deal);
  context.redirect(deal_address(deal.id), "Alterações salvas.");
}

}  // namespace

void add_deal_pages(Router& router) {
  router.get("/negocios", list);
  router.get("/empresas/{}/negocios/novo", ask_registration);
  router.post("/empresas/{}/negocios/novo", register_deal);
  router.get("/negocios/{}/alterar", ask_change);
  router.post("/negocios/{}/alterar", change_deal);
}

}  // namespace pradelis::site
