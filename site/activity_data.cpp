#include "site/activity_data.h"

#include "site/deal_data.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::int32_t activities_shown = 50;

constexpr const char* activity_columns =
    "a.oid, a.rpessoa, a.rnegociopossivel, a.ratividade, a.rvendedor, a.rcontato, a.data, a.observacao,"
    " a.proximocontato, a.rproximaatividade, a.rproximovendedor, k.nome, n.nome, c.nome, x.nome, y.nome,"
    " v.nome";
constexpr const char* activity_sources =
    " from crm_atividade a join item_r i on i.oid = a.oid left join item k on k.oid = a.ratividade"
    " left join item n on n.oid = a.rnegociopossivel left join item c on c.oid = a.rcontato"
    " left join item x on x.oid = a.rproximaatividade left join item y on y.oid = a.rproximovendedor"
    " left join item v on v.oid = a.rvendedor";
constexpr std::size_t performer_column = 16;

Activity activity_of(const Row& row) {
  Activity activity;
  activity.id = row.id(0);
  activity.company = row.id(1);
  activity.deal = row.id(2);
  activity.kind = row.id(3);
  activity.performer = row.id(4);
  activity.contact = row.id(5);
  activity.date = row.date(6);
  activity.note = row.text(7);
  activity.next = row.date(8);
  activity.next_kind = row.id(9);
  activity.next_person = row.id(10);
  activity.kind_name = row.text(11);
  activity.deal_name = activity.deal == 0 ? std::string() : row.text(12);
  activity.contact_name = activity.contact == 0 ? std::string() : row.text(13);
  activity.next_kind_name = row.text(14);
  activity.next_person_name = row.component_text(15);
  return activity;
}

View activity_view(const Row& row) {
  const Activity activity = activity_of(row);
  View view;
  view.set("kind", activity.kind_name).set("performer", row.component_text(performer_column));
  view.set("date", activity.date ? day_text(*activity.date) : std::string());
  view.set("change", activity_address(activity.id) + "/alterar");
  view.optional("note", activity.note).optional("contact", activity.contact_name);
  view.optional("deal", activity.deal_name).set("deal_page", deal_address(activity.deal));
  if (activity.next) {
    view.set("next", day_text(*activity.next)).set("distance", distance_text(*activity.next));
    view.optional("next_kind", activity.next_kind_name).optional("next_person", activity.next_person_name);
  } else {
    view.flag("next", false);
  }
  return view;
}

std::vector<View> newest_activities(Context& context, const std::string& condition) {
  std::vector<View> views;
  each_row(context.crm(),
           concat("select ", activity_columns, activity_sources, " where ", condition,
                  " order by a.data desc, a.oid desc"),
           activities_shown, [&](const Row& row) { views.push_back(activity_view(row)); });
  return views;
}

}  // namespace

Activity read_activity(Context& context, std::int32_t id) {
  Activity activity;
  each_row(context.crm(), concat("select ", activity_columns, activity_sources, " where a.oid = ", id), 1,
           [&](const Row& row) { activity = activity_of(row); });
  context.visible().require_company_or_deal(activity.company, activity.deal);
  return activity;
}

std::string activity_address(std::int32_t activity) { return "/atividades/" + std::to_string(activity); }

std::vector<View> company_activities(Context& context, std::int32_t company) {
  return newest_activities(
      context,
      concat("a.rpessoa = ", company, " and (isnull(a.rnegociopossivel, 0) = 0 or a.rnegociopossivel in (",
             context.visible().deals_of(company), "))"));
}

std::vector<View> deal_activities(Context& context, std::int32_t deal) {
  return newest_activities(context, concat("a.rnegociopossivel = ", deal));
}

}  // namespace pradelis::site
