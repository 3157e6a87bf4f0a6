#include "dataaccess/schema/fixed.h"
#include "site/city_data.h"
#include "site/context.h"
#include "site/csv.h"
#include "site/pager.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "site/transaction.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::int32_t suggestions_shown = 8;

std::string json_text(const std::string& text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    json += c == '\n' || c == '\r' || c == '\t' ? ' ' : c;
  }
  return json + "\"";
}

/// Names of cities, for the field that one is typed into.
void suggest(Context& context) {
  component::CRM& crm = context.crm();
  std::string json;
  const std::string typed(trim(context.request().query.get("busca")));
  if (!typed.empty()) {
    each_row(
        crm,
        concat(
            "select i.nome from cidade c cross join item_r i where i.oid = c.oid and UPPER(i.nome) like UPPER('",
            like_anywhere(crm, typed), "') escape '!' order by i.nome"),
        suggestions_shown,
        [&](const Row& row) { json += (json.empty() ? "" : ",") + json_text(row.text(0)); });
  }
  context.send_json("[" + json + "]");
}

constexpr const char* city_sources =
    " from cidade c left join item e on e.oid = c.rprovincia, item_r i where i.oid = c.oid";

/// What the visitor asked the list for, to follow other conditions.
std::string list_condition(Context& context) {
  const std::string search(trim(context.request().query.get("busca")));
  if (search.empty()) return {};
  return concat(" and UPPER(i.nome) like UPPER('", like_anywhere(context.crm(), search), "') escape '!'");
}

void list(Context& context) {
  Pager pager(context.request(), {"i.nome", "c.oid", "select nome from item where oid = "});
  const std::string& search = context.request().query.get("busca");
  const bool keeper = context.visible().administers();
  std::vector<std::pair<std::int32_t, View>> rows;
  each_row(context.crm(),
           concat("select c.oid, i.nome, e.nome, c.ddd", city_sources, list_condition(context),
                  pager.condition(), pager.ordering()),
           Pager::limit(), [&](const Row& row) {
             View view;
             view.set("name", row.text(1)).set("state", row.text(2)).set("code", row.text(3));
             view.set("address", "/cidades/" + std::to_string(row.id(0))).flag("keeper", keeper);
             rows.emplace_back(row.id(0), std::move(view));
           });
  pager.arrange(rows);
  View view;
  view.set("export", "/cidades/exportar" + (search.empty() ? "" : "?busca=" + url_encode(search)));
  view.set("search", search).flag("filtered", !search.empty()).flag("none", rows.empty());
  if (!rows.empty()) view.section("pager", pager.view(rows.front().first, rows.back().first));
  std::vector<View> cities;
  for (auto& [id, city] : rows) cities.push_back(std::move(city));
  view.list("cities", std::move(cities));
  context.show("cities", "Cidades", "empresas", std::move(view));
}

void export_list(Context& context) {
  CsvWriter csv;
  csv.text("Cidade").text("Estado").text("DDD").end_row();
  each_streamed_row(
      context.crm(),
      concat("select i.nome, e.nome, c.ddd", city_sources, list_condition(context),
             " order by i.nome, c.oid"),
      [&](const Row& row) { csv.text(row.text(0)).text(row.text(1)).text(row.text(2)).end_row(); });
  context.send_csv("cidades", csv.take());
}

Form city_form(Context& context, const City* city = nullptr) {
  auto states = entries(context.crm(), ReferenceList::States);
  if (city != nullptr) keep_option(states, city->state, city->state_name);
  Form form;
  form.text("nome", "Nome da cidade").required();
  form.choice("estado", "Estado", std::move(states)).required().half();
  form.text("ddd", "DDD").limit(3).half().keyboard("numeric");
  return form;
}

void show_registration(Context& context, const Form& form) {
  context.show_form(form, {"Nova cidade", "empresas", "Cadastrar cidade", city_trail()});
}

void ask_registration(Context& context) { show_registration(context, city_form(context)); }

void register_city(Context& context) {
  Form form = city_form(context);
  const RecordRow cities{"item", dataaccess::fixed::class_city};
  const bool done = form.read(context.request().form) && attempt_whole(context.crm(), cities, form, [&] {
                      const Variant result =
                          context.crm().Cadastrar_Cidade(form.id_of("estado"), form.text_of("ddd"), "",
                                                         form.text_of("nome"), context.person());
                      if (result.is(VariantType::Text)) form.refuse("nome", result.get<std::string>());
                    });
  if (!done) return show_registration(context, form);
  context.redirect("/cidades?busca=" + url_encode(form.text_of("nome")), "Cidade cadastrada.");
}

/// A city to change: those are kept by those who administer a group, since all teams share them.
City read_kept_city(Context& context) {
  context.require_administrator();
  return read_city(context, context.id());
}

/// The form of a city as it is stored.
Form change_form(Context& context, const City& city) {
  Form form = city_form(context, &city);
  form.fill("nome", city.name).fill("estado", city.state).fill("ddd", city.code);
  return form.guard();
}

void show_change(Context& context, const Form& form) {
  FormPage page{"Alterar cidade", "empresas", "Salvar alterações", city_trail()};
  page.deletion = concat("/cidades/", context.id(), "/excluir");
  context.show_form(form, page);
}

void ask_change(Context& context) { show_change(context, change_form(context, read_kept_city(context))); }

void change_city(Context& context) {
  component::CRM& crm = context.crm();
  const City city = read_kept_city(context);
  Form form = change_form(context, city);
  form.read(context.request().form);
  const auto namesake = find_city(crm, form.text_of("nome"));
  if (namesake && *namesake != city.id) form.refuse("nome", "Já existe uma cidade com esse nome");
  const auto present = [&] { return change_form(context, read_kept_city(context)); };
  const bool done = !form.refused() && change_record(crm, {"item", city.id}, form, present, [&] {
    rename_item(crm, city.id, form.text_of("nome"), context.person());
    change_row(crm, concat("select rprovincia, ddd from cidade where oid = ", city.id),
               [&](dataaccess::Recordset& row) {
                 row.set("rprovincia", form.id_of("estado"));
                 row.set("ddd", form.text_of("ddd"));
               });
  });
  if (!done) return show_change(context, form);
  context.redirect("/cidades?busca=" + url_encode(form.text_of("nome")), "Cidade alterada.");
}

}  // namespace

void add_city_pages(Router& router) {
  router.get("/cidades", list);
  router.get("/cidades/exportar", export_list);
  router.get("/cidades/sugestoes", suggest);
  router.get("/cidades/nova", ask_registration);
  router.post("/cidades/nova", register_city);
  router.get("/cidades/{}/alterar", ask_change);
  router.post("/cidades/{}/alterar", change_city);
}

}  // namespace pradelis::site
