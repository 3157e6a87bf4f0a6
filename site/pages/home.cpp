#include "dataaccess/schema/fixed.h"
#include "site/company_data.h"
#include "site/context.h"
#include "site/deal_data.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/still_deals.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::size_t deals_shown = 8;
constexpr std::int32_t companies_shown = 6;

std::string greeting(const User& user) {
  const std::int32_t hour = parts_of(now()).hour;
  const std::string wish = hour < 12 ? "Bom dia" : hour < 18 ? "Boa tarde" : "Boa noite";
  const std::string first = user.name.substr(0, user.name.find(' '));
  return first.empty() ? wish : wish + ", " + first;
}

/// Reads rows one by one, as long as `use` says so.
template <class Use>
void each_row_while(component::CRM& crm, const std::string& sql, Use&& use) {
  crm.Executar(sql, dataaccess::CursorType::ForwardOnly);
  const dataaccess::RecordsetPtr rows = std::exchange(crm.rs, nullptr);
  while (!rows->Eof() && use(Row(*rows))) rows->MoveNext();
  rows->Close();
}

/// What stands open: one pass over the deals in the order of their expected days.
struct OpenDeals {
  int count = 0;
  double sum = 0;
  int overdue = 0;
  std::vector<std::int32_t> next;  ///< those expected first from today on
};

OpenDeals read_open_deals(Context& context) {
  OpenDeals open;
  each_row_while(context.crm(),
                 concat("select n.oid, n.dataprovavel, n.valorprovavel from crm_pos_negocio n join item_r i"
                        " on i.oid = n.oid where n.oid in (",
                        context.visible().deals({true, false, false}), ") order by n.dataprovavel, n.oid"),
                 [&](const Row& row) {
                   ++open.count;
                   open.sum += row.number(2);
                   const Variant expected = row.value(1);
                   if (expected.is_null()) return true;
                   if (day_number(to_date(expected)) < day_number(today())) {
                     ++open.overdue;
                   } else if (open.next.size() < deals_shown) {
                     open.next.push_back(row.id(0));
                   }
                   return true;
                 });
  return open;
}

void add_open_deals(Context& context, View& view) {
  const OpenDeals open = read_open_deals(context);
  view.set("open_count", count_text(open.count, "negócio", "negócios"))
      .set("open_sum", short_money_text(open.sum));
  view.set("overdue", count_text(open.overdue, "negócio", "negócios")).flag("any_overdue", open.overdue > 0);
  std::vector<std::pair<std::int32_t, View>> next;
  if (!open.next.empty()) {
    each_row(context.crm(),
             concat("select ", deal_columns, deal_sources, " where n.oid in (", join_identifiers(open.next),
                    ") order by n.dataprovavel, n.oid"),
             0, [&](const Row& row) { next.emplace_back(row.id(0), deal_entry(row)); });
  }
  mark_still(context, next);
  std::vector<View> deals;
  for (auto& [id, deal] : next) deals.push_back(std::move(deal));
  view.flag("no_deals", deals.empty()).list("deals", std::move(deals));
}

void add_won_figures(Context& context, View& view) {
  const DateParts present = parts_of(today());
  const Date month = make_date({present.year, present.month, 1, 0, 0, 0, 0});
  int count = 0;
  double sum = 0;
  each_row_while(
      context.crm(),
      concat("select n.fechamento, n.valorfechamento from crm_pos_negocio n join item_r i on i.oid = n.oid"
             " where n.fechamento is not null and n.rmotivo is null and n.oid in (",
             context.visible().deals({false, true, false}), ") order by n.fechamento desc"),
      [&](const Row& row) {
        if (day_number(to_date(row.value(0))) < day_number(month)) return false;
        ++count;
        sum += row.number(1);
        return true;
      });
  view.set("won_count", count_text(count, "negócio", "negócios")).set("won_sum", short_money_text(sum));
}

void add_companies(Context& context, View& view) {
  const std::string rows = context.visible().company_rows();
  each_row(
      context.crm(),
      concat("select count(*), sum(case when q.oid in (select ritem from classificacao where rcategoria = ",
             dataaccess::fixed::category_client, ") then 1 else 0 end) from ", rows, " where ",
             Visibility::company_join),
      1, [&](const Row& row) {
        view.set("company_count", count_text(to_int64(row.value(0)), "empresa", "empresas"));
        view.set("client_count", count_text(row.id(1), "cliente", "clientes"));
      });
  std::vector<View> companies;
  each_row(context.crm(),
           concat("select q.oid, j.nome, o.nome, j.criadoem from ", rows,
                  " left join item o on o.oid = j.criadopor where ", Visibility::company_join,
                  " order by q.oid desc"),
           companies_shown, [&](const Row& row) {
             View company;
             company.set("address", company_address(row.id(0))).set("name", row.text(1));
             company.set("owner", row.component_text(2));
             companies.push_back(std::move(company.set("date", day_text(row.value(3)))));
           });
  view.flag("no_companies", companies.empty()).list("companies", std::move(companies));
}

void show_home(Context& context) {
  View view;
  view.set("greeting", greeting(context.user())).set("today", long_day_text(today()));
  add_open_deals(context, view);
  add_won_figures(context, view);
  add_companies(context, view);
  context.show("home", "Início", "inicio", std::move(view));
}

}  // namespace

void add_home_pages(Router& router) { router.get("/", show_home); }

}  // namespace pradelis::site
