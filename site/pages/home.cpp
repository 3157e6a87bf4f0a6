#include "site/company_data.h"
#include "site/context.h"
#include "site/deal_data.h"
#include "site/pages/pages.h"
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

void add_open_figures(Context& context, View& view, const std::string& open) {
  each_row(context.crm(),
           concat("select count(*), sum(n.valorprovavel)", deal_sources, " where n.oid in (", open, ")"), 1,
           [&](const Row& row) {
             view.set("open_count", count_text(to_int64(row.value(0)), "negócio", "negócios"));
             view.set("open_sum", money_text(row.number(1)));
           });
}

/// Counts the open deals whose expected day has passed, and shows the next ones.
void add_expected_deals(Context& context, View& view, const std::string& open) {
  int overdue = 0;
  std::vector<View> deals;
  each_row_while(
      context.crm(),
      concat("select ", deal_columns, deal_sources, " where n.dataprovavel is not null and n.oid in (", open,
             ") order by n.dataprovavel, n.oid"),
      [&](const Row& row) {
        if (day_number(to_date(row.value(expected_date_column))) < day_number(today())) {
          ++overdue;
        } else {
          deals.push_back(deal_entry(row));
        }
        return deals.size() < deals_shown;
      });
  view.set("overdue", count_text(overdue, "negócio", "negócios")).flag("any_overdue", overdue > 0);
  view.flag("no_deals", deals.empty()).list("deals", std::move(deals));
}

void add_won_figures(Context& context, View& view) {
  const DateParts present = parts_of(today());
  int count = 0;
  double sum = 0;
  each_row_while(context.crm(),
                 concat("select n.fechamento, n.valorfechamento", deal_sources,
                        " where n.fechamento is not null and n.rmotivo is null and n.oid in (",
                        context.visible().deals({false, true, false}), ") order by n.fechamento desc"),
                 [&](const Row& row) {
                   const DateParts closed = parts_of(to_date(row.value(0)));
                   if (closed.year != present.year || closed.month != present.month) {
                     return closed.year > present.year ||
                            (closed.year == present.year && closed.month > present.month);
                   }
                   ++count;
                   sum += row.number(1);
                   return true;
                 });
  view.set("won_count", count_text(count, "negócio", "negócios")).set("won_sum", money_text(sum));
}

void add_company_figures(Context& context, View& view) {
  component::CRM& crm = context.crm();
  const std::string visible =
      concat("select count(*) from pessoajuridica_r j where j.oid in (", context.visible().companies(), ")");
  const auto companies = to_int64(single_value(crm, visible));
  const auto clients = to_int64(
      single_value(crm, visible + " and j.oid in (select ritem from classificacao where rcategoria = 2121)"));
  view.set("company_count", count_text(companies, "empresa", "empresas"));
  view.set("client_count", count_text(clients, "cliente", "clientes"));
}

std::vector<View> newest_companies(Context& context) {
  std::vector<View> companies;
  each_row(
      context.crm(),
      concat("select j.oid, j.nome, o.nome, j.criadoem from pessoajuridica_r j left join item o"
             " on o.oid = j.criadopor where j.oid in (",
             context.visible().companies(), ") order by j.oid desc"),
      companies_shown, [&](const Row& row) {
        View view;
        view.set("address", company_address(row.id(0))).set("name", row.text(1)).set("owner", row.text(2));
        companies.push_back(std::move(view.set("date", day_text(row.value(3)))));
      });
  return companies;
}

void show_home(Context& context) {
  const std::string open = context.visible().deals({true, false, false});
  View view;
  view.set("greeting", greeting(context.user())).set("today", long_day_text(today()));
  add_open_figures(context, view, open);
  add_won_figures(context, view);
  add_company_figures(context, view);
  add_expected_deals(context, view, open);
  auto companies = newest_companies(context);
  view.flag("no_companies", companies.empty()).list("companies", std::move(companies));
  context.show("home", "Início", "inicio", std::move(view));
}

}  // namespace

void add_home_pages(Router& router) { router.get("/", show_home); }

}  // namespace pradelis::site
