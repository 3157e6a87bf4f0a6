#include "dataaccess/schema/fixed.h"
#include "site/company_data.h"
#include "site/context.h"
#include "site/csv.h"
#include "site/pager.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::int32_t client = dataaccess::fixed::category_client;

struct CompanyRow {
  std::int32_t id = 0;
  View view;
};

/// What the visitor asked the list for, to follow other conditions.
std::string list_condition(Context& context) {
  component::CRM& crm = context.crm();
  const Parameters& query = context.request().query;
  std::string condition;
  if (const std::string search(trim(query.get("busca"))); !search.empty()) {
    const std::string like = concat(" like UPPER('", like_anywhere(crm, search), "') escape '!'");
    condition += concat(" and (UPPER(j.nome)", like, " or UPPER(p.razaosocial)", like, ")");
  }
  const std::string& situation = query.get("situacao");
  if (situation == "clientes" || situation == "prospectos") {
    condition += concat(" and q.oid ", situation == "clientes" ? "in" : "not in",
                        " (select ritem from classificacao where rcategoria = ", client, ")");
  }
  return condition;
}

/// Rows of the page in the order of names: the engine walks the names and stops when the page is full.
std::vector<CompanyRow> list_rows(Context& context, const std::string& condition, Pager& pager) {
  const std::string sql = concat(
      "select i.oid, i.nome, p.razaosocial, ci.nome, o.nome,"
      " case when i.oid in (select ritem from classificacao where rcategoria = ",
      client, ") then 1 else 0 end from item i cross join ", context.visible().company_rows(),
      " cross join pessoa p left join item o on o.oid = j.criadopor"
      " left join endereco e on e.oid = (select min(oid) from endereco where ritem = j.oid)"
      " left join item ci on ci.oid = e.rcidade where q.oid = i.oid and p.oid = q.oid and ",
      Visibility::company_join, condition, pager.condition(), pager.ordering());
  std::vector<CompanyRow> rows;
  each_row(context.crm(), sql, Pager::limit(), [&](const Row& row) {
    View view;
    view.set("address", company_address(row.id(0))).set("name", row.text(1)).set("legal_name", row.text(2));
    view.set("city", row.text(3)).set("owner", row.component_text(4)).flag("client", row.id(5) == 1);
    rows.push_back({row.id(0), std::move(view)});
  });
  pager.arrange(rows);
  return rows;
}

std::int64_t count_rows(Context& context, const std::string& condition) {
  return to_int64(single_value(
      context.crm(),
      concat("select count(*) from ", context.visible().company_rows(),
             " cross join pessoa p where p.oid = q.oid and ", Visibility::company_join, condition)));
}

View situation_tab(const Request& request, const std::string& value, const std::string& text) {
  const std::string search = request.query.get("busca");
  std::string address = "/empresas?situacao=" + value;
  if (!search.empty()) address += "&busca=" + url_encode(search);
  if (!request.query.get("para").empty()) address += "&para=negocio";
  const std::string& present = request.query.get("situacao");
  return View().set("address", address).set("text", text).flag("here", present == value);
}

void list(Context& context) {
  const Request& request = context.request();
  Pager pager(request, {"i.nome", "i.oid", "select nome from item where oid = "});
  if (pager.from() != 0) context.visible().require_company(pager.from());
  const std::string condition = list_condition(context);
  auto rows = list_rows(context, condition, pager);

  View view;
  view.set("count", count_text(count_rows(context, condition), "empresa", "empresas"))
      .set("search", request.query.get("busca"));
  view.set("situation", request.query.get("situacao")).flag("filtered", !request.query.get("busca").empty());
  view.list("tabs", {situation_tab(request, "", "Todas"), situation_tab(request, "clientes", "Clientes"),
                     situation_tab(request, "prospectos", "Prospectos")});
  const std::string filters = request.query.encode_without({"apos", "antes", "para"});
  view.set("export", "/empresas/exportar" + (filters.empty() ? "" : "?" + filters));
  view.flag("choosing", request.query.get("para") == "negocio").flag("none", rows.empty());
  if (!rows.empty()) view.section("pager", pager.view(rows.front().id, rows.back().id));
  std::vector<View> views;
  for (CompanyRow& row : rows) views.push_back(std::move(row.view));
  view.list("companies", std::move(views));
  context.show("companies", "Empresas", "empresas", std::move(view));
}

/// The companies of the list, all pages of it. One with several contacts has a row for each.
void export_list(Context& context) {
  CsvWriter csv;
  for (const char* heading :
       {"Empresa", "Razão social", "Situação", "Vendedor", "Rua", "Número", "Complemento", "Bairro", "Cidade",
        "CEP", "Cadastrada em", "Observação", "Contato", "Cargo"}) {
    csv.text(heading);
  }
  csv.end_row();
  const std::string sql = concat(
      "select j.nome, p.razaosocial,"
      " case when j.oid in (select ritem from classificacao where rcategoria = ",
      client,
      ") then 1 else 0 end, o.nome, e.rua, e.numero, e.complemento, e.bairro, ci.nome, e.cep, j.criadoem,"
      " j.observacao, k.nome, k.cargo"
      " from ",
      context.visible().company_rows(),
      " cross join pessoa p left join item o on o.oid = j.criadopor"
      " left join endereco e on e.oid = (select min(oid) from endereco where ritem = j.oid)"
      " left join item ci on ci.oid = e.rcidade"
      " left join (select a.rgrupo as rgrupo, i.oid as oid, i.nome as nome, r.nome as cargo from agrupamento a"
      " join item_r i on i.oid = a.ritem left join item r on r.oid = a.rpapel where i.cid = 45) k"
      " on k.rgrupo = j.oid",
      " where p.oid = q.oid and ", Visibility::company_join, list_condition(context),
      " order by j.nome, j.oid, k.nome, k.oid");
  each_streamed_row(context.crm(), sql, [&](const Row& row) {
    csv.text(row.text(0)).text(row.text(1)).text(row.id(2) == 1 ? "Cliente" : "Prospecto");
    csv.text(row.component_text(3));
    for (const std::size_t column : {4, 5, 6, 7, 8, 9}) csv.text(row.text(column));
    csv.day(row.value(10)).text(row.text(11)).text(row.text(12)).text(row.text(13));
    csv.end_row();
  });
  context.send_csv("empresas", csv.take());
}

}  // namespace

void add_company_list(Router& router) {
  router.get("/empresas", list);
  router.get("/empresas/exportar", export_list);
}

}  // namespace pradelis::site
