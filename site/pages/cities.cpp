#include "site/context.h"
#include "site/pager.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
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
        concat("select i.nome from cidade c cross join item_r i where i.oid = c.oid and UPPER(i.nome) like UPPER('",
               like_anywhere(crm, typed), "') escape '!' order by i.nome"),
        suggestions_shown,
        [&](const Row& row) { json += (json.empty() ? "" : ",") + json_text(row.text(0)); });
  }
  context.send_json("[" + json + "]");
}

void list(Context& context) {
  Pager pager(context.request(), {"i.nome", "c.oid", "select nome from item where oid = "});
  component::CRM& crm = context.crm();
  const std::string search(trim(context.request().query.get("busca")));
  std::string condition = " where i.oid = c.oid";
  if (!search.empty()) {
    condition += concat(" and UPPER(i.nome) like UPPER('", like_anywhere(crm, search), "') escape '!'");
  }
  std::vector<std::pair<std::int32_t, View>> rows;
  each_row(
      crm,
      concat(
          "select c.oid, i.nome, e.nome, c.ddd from cidade c left join item e on e.oid = c.rprovincia, item_r i",
          condition, pager.condition(), pager.ordering()),
      Pager::limit(), [&](const Row& row) {
        View view;
        view.set("name", row.text(1)).set("state", row.text(2)).set("code", row.text(3));
        rows.emplace_back(row.id(0), std::move(view));
      });
  pager.arrange(rows);
  View view;
  view.set("search", search).flag("filtered", !search.empty()).flag("none", rows.empty());
  if (!rows.empty()) view.section("pager", pager.view(rows.front().first, rows.back().first));
  std::vector<View> cities;
  for (auto& [id, city] : rows) cities.push_back(std::move(city));
  view.list("cities", std::move(cities));
  context.show("cities", "Cidades", "empresas", std::move(view));
}

Form city_form(Context& context) {
  Form form;
  form.text("nome", "Nome da cidade").required();
  form.choice("estado", "Estado", entries(context.crm(), ReferenceList::States)).required().half();
  form.text("ddd", "DDD").limit(3).half().keyboard("numeric");
  return form;
}

void show_registration(Context& context, const Form& form) {
  context.show_form(
      form,
      {"Nova cidade", "empresas", "Cadastrar cidade", {{"/empresas", "Empresas"}, {"/cidades", "Cidades"}}});
}

void ask_registration(Context& context) { show_registration(context, city_form(context)); }

void register_city(Context& context) {
  Form form = city_form(context);
  const bool done = form.read(context.request().form) && attempt(form, [&] {
                      const Variant result =
                          context.crm().Cadastrar_Cidade(form.id_of("estado"), form.text_of("ddd"), "",
                                                         form.text_of("nome"), context.person());
                      if (result.is(VariantType::Text)) form.refuse("nome", result.get<std::string>());
                    });
  if (!done) return show_registration(context, form);
  context.redirect("/cidades?busca=" + url_encode(form.text_of("nome")), "Cidade cadastrada.");
}

}  // namespace

void add_city_pages(Router& router) {
  router.get("/cidades", list);
  router.get("/cidades/sugestoes", suggest);
  router.get("/cidades/nova", ask_registration);
  router.post("/cidades/nova", register_city);
}

}  // namespace pradelis::site
