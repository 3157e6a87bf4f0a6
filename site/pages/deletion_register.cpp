#include "dataaccess/schema/fixed.h"
#include "site/context.h"
#include "site/csv.h"
#include "site/pager.h"
#include "site/pages/pages.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

const char* class_name(std::int32_t item_class) {
  switch (item_class) {
    case fixed::class_company:
      return "Empresa";
    case fixed::class_person:
      return "Pessoa";
    case fixed::class_deal:
      return "Negócio";
    case fixed::class_activity:
      return "Atividade";
    case fixed::class_city:
      return "Cidade";
    case fixed::class_group:
      return "Grupo";
    case fixed::class_user:
      return "Usuário";
    case fixed::class_system:
      return "Item de lista";
    default:
      return "Outro";
  }
}

/// Deletions that the visitor, or somebody whose records he may see, made; the maintenance user sees all.
std::string selection(Context& context) {
  return " from excluido e left join item o on o.oid = e.excluidopor where " +
         (context.user().maintenance ? std::string("e.registro > 0")
                                     : concat("e.excluidopor in (", context.visible().users(), ")"));
}

constexpr const char* columns = "select e.registro, e.nome, e.cid, o.nome, e.excluidoem";

void require_entry(Context& context, std::int32_t entry) {
  const std::string sql = concat("select e.registro", selection(context), " and e.registro = ", entry);
  if (single_value(context.crm(), sql).is_null()) throw Refusal{404};
}

void list(Context& context) {
  Pager pager(context.request(),
              {"e.registro", "e.registro", "select registro from excluido where registro = ", true});
  if (pager.from() != 0) require_entry(context, pager.from());
  std::vector<std::pair<std::int32_t, View>> rows;
  each_row(context.crm(), concat(columns, selection(context), pager.condition(), pager.ordering()),
           Pager::limit(), [&](const Row& row) {
             View view;
             view.set("name", row.text(1)).set("kind", class_name(row.id(2)));
             view.set("person", row.component_text(3)).set("date", day_text(row.value(4)));
             rows.emplace_back(row.id(0), std::move(view));
           });
  pager.arrange(rows);
  View view;
  view.flag("none", rows.empty());
  if (!rows.empty()) view.section("pager", pager.view(rows.front().first, rows.back().first));
  std::vector<View> entries;
  for (auto& [id, entry] : rows) entries.push_back(std::move(entry));
  view.list("entries", std::move(entries));
  context.show("deletions", "Excluídos", "empresas", std::move(view));
}

void export_list(Context& context) {
  CsvWriter csv;
  csv.text("O quê").text("Nome").text("Excluído por").text("Excluído em").end_row();
  each_streamed_row(context.crm(), concat(columns, selection(context), " order by e.registro desc"),
                    [&](const Row& row) {
                      csv.text(class_name(row.id(2))).text(row.text(1)).text(row.component_text(3));
                      csv.day(row.value(4)).end_row();
                    });
  context.send_csv("excluidos", csv.take());
}

}  // namespace

void add_deletion_register(Router& router) {
  router.get("/excluidos", list);
  router.get("/excluidos/exportar", export_list);
}

}  // namespace pradelis::site
