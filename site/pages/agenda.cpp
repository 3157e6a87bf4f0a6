#include "site/activity_data.h"
#include "site/company_data.h"
#include "site/context.h"
#include "site/csv.h"
#include "site/deal_data.h"
#include "site/identifiers.h"
#include "site/pager.h"
#include "site/pages/pages.h"
#include "site/still_deals.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// Beyond this figures are not counted on.
constexpr std::int32_t most_counted = 100;

const Order by_due_date = {"a.proximocontato", "a.oid",
                           "select proximocontato from crm_atividade where oid = "};
const Order by_expected_date = {"isnull(n.dataprovavel, '99991231')", "n.oid",
                                "select isnull(dataprovavel, '99991231') from crm_pos_negocio where oid = "};
const Order longest_still = {last_move("n.oid", "i.criadoem"), "n.oid",
                             "select " + last_move("p.oid", "p.criadoem") + " from item p where p.oid = "};
constexpr std::size_t last_move_column = 9;

std::string person_condition(const char* column, std::int32_t person) {
  return person == 0 ? std::string() : concat(" and ", column, " = ", person);
}

/// Contacts that are planned for those whom the visitor may see, or for `person`. A later activity on the
/// same company and deal has taken a plan's place, and the plans of ended deals have ended with them.
std::string planned_contacts(Context& context, std::int32_t person) {
  const Visibility& visible = context.visible();
  return concat(
      " from crm_atividade a join item_r i on i.oid = a.oid join item c on c.oid = a.rpessoa"
      " left join item n on n.oid = a.rnegociopossivel left join item k on k.oid = a.rproximaatividade"
      " left join item v on v.oid = a.rproximovendedor where a.proximocontato is not null"
      " and a.rproximovendedor in (",
      visible.users(), ")", person_condition("a.rproximovendedor", person), " and a.rpessoa in (",
      visible.companies(), ") and (isnull(a.rnegociopossivel, 0) = 0 or a.rnegociopossivel in (",
      visible.deals({true, false, false}),
      ")) and not exists (select 1 from crm_atividade b where b.rpessoa = a.rpessoa"
      " and isnull(b.rnegociopossivel, 0) = isnull(a.rnegociopossivel, 0) and b.oid > a.oid)");
}

std::string open_deals(Context& context, std::int32_t person) {
  return concat(deal_sources, " where n.oid in (", context.visible().deals({true, false, false}), ")",
                person_condition("n.rvendedor", person));
}

/// Open deals whose last activity plans nothing.
std::string unplanned_deals(Context& context, std::int32_t person) {
  return open_deals(context, person) +
         " and not exists (select 1 from crm_atividade a where a.rnegociopossivel = n.oid"
         " and a.proximocontato is not null and not exists (select 1 from crm_atividade b"
         " where b.rnegociopossivel = n.oid and b.oid > a.oid))";
}

bool before_today(const Variant& date) { return day_number(to_date(date)) < day_number(today()); }

/// "12", or "99+".
std::string figure(std::int32_t count) {
  return count < most_counted ? std::to_string(count) : std::to_string(most_counted - 1) + "+";
}

std::int32_t count_overdue(Context& context, std::int32_t person) {
  std::int32_t count = 0;
  each_row(context.crm(),
           concat("select a.proximocontato", planned_contacts(context, person), " order by a.proximocontato"),
           most_counted, [&](const Row& row) { count += before_today(row.value(0)) ? 1 : 0; });
  return count;
}

std::int32_t count_still(Context& context, std::int32_t person) {
  std::int32_t count = 0;
  each_row(context.crm(),
           concat("select ", longest_still.key, open_deals(context, person), " order by ", longest_still.key),
           most_counted, [&](const Row& row) { count += stands_still(row.value(0)) ? 1 : 0; });
  return count;
}

View contact_view(const Row& row) {
  const std::int32_t company = row.id(1);
  const std::int32_t deal = row.id(3);
  const Variant due = row.value(7);
  const bool overdue = before_today(due);
  std::string log = company_address(company) + "/atividades/nova?atividade=" + std::to_string(row.id(9));
  if (deal != 0) log += "&negocio=" + std::to_string(deal);
  View view;
  view.set("company", row.text(2)).set("company_page", company_address(company)).set("log", log);
  view.optional("deal", deal == 0 ? std::string() : row.text(4)).set("deal_page", deal_address(deal));
  view.set("kind", row.text(5).empty() ? "Contato" : row.text(5)).set("person", row.component_text(6));
  view.set("date", day_text(due)).set("distance", distance_text(to_date(due))).optional("note", row.text(8));
  view.flag("overdue", overdue).flag("today", !overdue && day_number(to_date(due)) == day_number(today()));
  return view;
}

using Entries = std::vector<std::pair<std::int32_t, View>>;

void read_contacts_due(Context& context, Pager& pager, std::int32_t person, Entries& entries) {
  if (pager.from() != 0) read_activity(context, pager.from());
  each_row(context.crm(),
           concat("select a.oid, a.rpessoa, c.nome, a.rnegociopossivel, n.nome, k.nome, v.nome,"
                  " a.proximocontato, a.observacao, a.rproximaatividade",
                  planned_contacts(context, person), pager.condition(), pager.ordering()),
           Pager::limit(), [&](const Row& row) { entries.emplace_back(row.id(0), contact_view(row)); });
}

void read_unplanned(Context& context, Pager& pager, std::int32_t person, Entries& entries) {
  if (pager.from() != 0) context.visible().require_deal(pager.from());
  each_row(
      context.crm(),
      concat("select ", deal_columns, unplanned_deals(context, person), pager.condition(), pager.ordering()),
      Pager::limit(), [&](const Row& row) { entries.emplace_back(row.id(0), deal_entry(row)); });
}

void read_still(Context& context, Pager& pager, std::int32_t person, Entries& entries) {
  if (pager.from() != 0) context.visible().require_deal(pager.from());
  each_row(context.crm(),
           concat("select ", deal_columns, ", ", longest_still.key, open_deals(context, person),
                  pager.condition(), pager.ordering()),
           Pager::limit(), [&](const Row& row) {
             const Variant moved = row.value(last_move_column);
             if (!stands_still(moved)) return;
             View view = deal_entry(row);
             view.set("date", day_text(moved)).set("distance", distance_text(to_date(moved)));
             entries.emplace_back(row.id(0), std::move(view));
           });
}

std::string whole(const Order& order) { return concat(" order by ", order.key, ", ", order.identifier); }

void write_contacts_due(Context& context, std::int32_t person, CsvWriter& csv) {
  for (const char* heading : {"Data", "Empresa", "Negócio", "O que fazer", "Vendedor", "Observação"})
    csv.text(heading);
  csv.end_row();
  each_streamed_row(context.crm(),
                    concat("select a.proximocontato, c.nome, n.nome, k.nome, v.nome, a.observacao",
                           planned_contacts(context, person), whole(by_due_date)),
                    [&](const Row& row) {
                      csv.day(row.value(0)).text(row.text(1)).text(row.text(2)).text(row.text(3));
                      csv.text(row.component_text(4)).text(row.text(5)).end_row();
                    });
}

/// Deals with the day of their last activity, those that stand still alone when `still_only`.
void write_deals(Context& context, const std::string& deals, const Order& order, bool still_only,
                 CsvWriter& csv) {
  for (const char* heading :
       {"Negócio", "Empresa", "Vendedor", "Fechamento previsto", "Valor previsto", "Última atividade"}) {
    csv.text(heading);
  }
  csv.end_row();
  each_streamed_row(context.crm(),
                    concat("select i.nome, c.nome, v.nome, n.dataprovavel, n.valorprovavel, ",
                           longest_still.key, deals, whole(order)),
                    [&](const Row& row) {
                      if (still_only && !stands_still(row.value(5))) return;
                      csv.text(row.text(0)).text(row.text(1)).text(row.component_text(2)).day(row.value(3));
                      csv.amount(row.value(4)).day(row.value(5)).end_row();
                    });
}

void write_unplanned(Context& context, std::int32_t person, CsvWriter& csv) {
  write_deals(context, unplanned_deals(context, person), by_expected_date, false, csv);
}

void write_still(Context& context, std::int32_t person, CsvWriter& csv) {
  write_deals(context, open_deals(context, person), longest_still, true, csv);
}

/// One way to look at the agenda.
struct Tab {
  const char* name;
  const char* text;
  const Order& order;
  void (*read)(Context&, Pager&, std::int32_t, Entries&);
  void (*write)(Context&, std::int32_t, CsvWriter&);
};

const Tab tabs[] = {
    {"contatos", "Contatos", by_due_date, read_contacts_due, write_contacts_due},
    {"sem-plano", "Sem próximo contato", by_expected_date, read_unplanned, write_unplanned},
    {"parados", "Parados", longest_still, read_still, write_still},
};

const Tab& asked_tab(const Request& request) {
  for (const Tab& tab : tabs) {
    if (request.query.get("ver") == tab.name) return tab;
  }
  return tabs[0];
}

std::vector<View> tab_views(Context& context, const Tab& asked, std::int32_t person) {
  const std::int32_t overdue = count_overdue(context, person);
  const std::int32_t standing = count_still(context, person);
  std::vector<View> views;
  for (const Tab& tab : tabs) {
    std::string address = std::string("/agenda?ver=") + tab.name;
    if (person != 0) address += "&vendedor=" + std::to_string(person);
    View view;
    view.set("address", address).set("text", tab.text).flag("here", &tab == &asked).flag("figure", false);
    if (&tab == &tabs[0] && overdue > 0) {
      view.set("figure", figure(overdue)).set("of_what", overdue == 1 ? "atrasado" : "atrasados");
    }
    if (&tab == &tabs[2] && standing > 0) {
      view.set("figure", figure(standing)).set("of_what", standing == 1 ? "negócio" : "negócios");
    }
    views.push_back(std::move(view));
  }
  return views;
}

void show_agenda(Context& context) {
  const Tab& asked = asked_tab(context.request());
  const std::int32_t person = parse_identifier(context.request().query.get("vendedor")).value_or(0);
  Pager pager(context.request(), asked.order);
  Entries entries;
  asked.read(context, pager, person, entries);
  pager.arrange(entries);

  View view;
  view.set("export", std::string("/agenda/exportar?ver=") + asked.name +
                         (person == 0 ? "" : "&vendedor=" + std::to_string(person)));
  view.set("asked", asked.name).list("tabs", tab_views(context, asked, person));
  std::vector<View> people;
  for (const Option& one : context.visible().salespeople()) {
    people.push_back(
        View().set("id", std::to_string(one.id)).set("name", one.label).flag("chosen", one.id == person));
  }
  view.flag("team", people.size() > 1).list("people", std::move(people)).set("today", long_day_text(today()));
  view.flag("none", entries.empty()).flag("contacts_asked", asked.read == read_contacts_due);
  view.flag("unplanned_asked", asked.read == read_unplanned).flag("still_asked", asked.read == read_still);
  if (!entries.empty()) view.section("pager", pager.view(entries.front().first, entries.back().first));
  std::vector<View> views;
  for (auto& [id, entry] : entries) views.push_back(std::move(entry));
  view.list(asked.read == read_contacts_due ? "contacts" : "deals", std::move(views));
  context.show("agenda", "Agenda", "agenda", std::move(view));
}

void export_agenda(Context& context) {
  const std::int32_t person = parse_identifier(context.request().query.get("vendedor")).value_or(0);
  CsvWriter csv;
  asked_tab(context.request()).write(context, person, csv);
  context.send_csv("agenda", csv.take());
}

}  // namespace

void add_agenda_pages(Router& router) {
  router.get("/agenda", show_agenda);
  router.get("/agenda/exportar", export_agenda);
}

}  // namespace pradelis::site
