#include "site/activity_data.h"
#include "site/category_data.h"
#include "site/company_data.h"
#include "site/context.h"
#include "site/deal_data.h"
#include "site/extra_field_data.h"
#include "site/file_data.h"
#include "site/pages/pages.h"
#include "site/rows.h"
#include "site/still_deals.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::int32_t deals_shown = 20;

std::string address_line(const Company& company) {
  std::string line = company.street;
  const auto add = [&](const std::string& part, const char* separator) {
    if (part.empty()) return;
    if (!line.empty()) line += separator;
    line += part;
  };
  add(company.house, ", ");
  add(company.complement, ", ");
  add(company.district, " · ");
  return line;
}

std::vector<View> contact_views(Context& context, const std::string& company_page) {
  std::vector<View> views;
  for (const Contact& contact : read_contacts(context, context.id())) {
    View view;
    view.set("name", contact.name).set("role", contact.role_name);
    view.set("address", company_page + "/contatos/" + std::to_string(contact.id) + "/alterar");
    views.push_back(std::move(view));
  }
  return views;
}

std::vector<View> deal_views(Context& context) {
  std::vector<std::pair<std::int32_t, View>> deals;
  each_row(context.crm(),
           concat("select ", deal_columns, deal_sources, " where n.oid in (",
                  context.visible().deals_of(context.id()), ") order by n.oid desc"),
           deals_shown, [&](const Row& row) { deals.emplace_back(row.id(0), deal_entry(row)); });
  mark_still(context, deals);
  std::vector<View> views;
  for (auto& [id, deal] : deals) views.push_back(std::move(deal));
  return views;
}

void show_company(Context& context) {
  const Company company = read_company(context, context.id());
  const std::string page = company_address(company.id);
  auto contacts = contact_views(context, page);
  auto deals = deal_views(context);
  auto activities = company_activities(context, company.id);
  View view;
  view.set("page", page).set("legal_name", company.legal_name).optional("note", company.note);
  view.set("owner", company.owner_name).set("registered", company.registered).flag("client", company.client);
  view.optional("address", address_line(company)).set("city", company.city);
  view.optional("postal_code", company.postal_code)
      .flag("transferable", context.visible().sees(company.owner));
  view.flag("no_contacts", contacts.empty()).list("contacts", std::move(contacts));
  view.flag("no_deals", deals.empty()).list("deals", std::move(deals));
  view.flag("no_activities", activities.empty()).list("activities", std::move(activities));
  auto files = file_views(context, company.id);
  view.flag("no_files", files.empty()).list("files", std::move(files));
  std::vector<View> categories;
  for (const Option& category : categories_of(context.crm(), company.id)) {
    categories.push_back(View().set("category", category.label));
  }
  view.list("categories", std::move(categories));
  if (const auto fields = read_extra_fields(context.crm(), false); !fields.empty()) {
    view.flag("has_fields");
    add_extra_fields(view, extra_field_rows(context, fields, company.id),
                     stored_extra_fields(context, fields, company.id));
  }
  context.show("company", company.name, "empresas", std::move(view));
}

}  // namespace

void add_company_detail(Router& router) { router.get("/empresas/{}", show_company); }

}  // namespace pradelis::site
