#include "dataaccess/schema/fixed.h"
#include "site/activity_data.h"
#include "site/city_data.h"
#include "site/company_data.h"
#include "site/deal_data.h"
#include "site/deletion.h"
#include "site/pages/pages.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

constexpr std::size_t names_shown = 10;

std::vector<DeletedObject> read_objects(component::CRM& crm, std::int32_t item_class,
                                        const std::string& rest) {
  std::vector<DeletedObject> objects;
  each_row(crm, concat("select i.oid, i.nome from ", rest, " order by i.nome, i.oid"), 0,
           [&](const Row& row) {
             objects.push_back({row.id(0), item_class, row.text(1)});
           });
  return objects;
}

std::vector<DeletedObject> activities_where(component::CRM& crm, const char* column, std::int32_t record) {
  return read_objects(
      crm, fixed::class_activity,
      concat("crm_atividade a join item_r i on i.oid = a.oid where a.", column, " = ", record));
}

/// "2 contatos: Rita, Zeca"; nothing for none.
void describe(Deletion& deletion, const std::vector<DeletedObject>& objects, const char* one,
              const char* many, bool named = true) {
  if (objects.empty()) return;
  std::string line = count_text(static_cast<std::int64_t>(objects.size()), one, many);
  for (std::size_t i = 0; named && i < objects.size() && i <= names_shown; ++i) {
    line += i == 0 ? ": " : ", ";
    line += i == names_shown ? "…" : objects[i].name;
  }
  deletion.details.push_back(std::move(line));
}

void describe_files(Deletion& deletion, component::CRM& crm, const std::string& attached) {
  const auto files = to_int64(single_value(crm, "select count(*) from crm_arquivo where " + attached));
  if (files == 0) return;
  deletion.details.push_back(
      count_text(files, "arquivo, que deixa de aparecer", "arquivos, que deixam de aparecer"));
}

Deletion company_deletion(Context& context) {
  component::CRM& crm = context.crm();
  const Company company = read_own_company(context, context.id());
  const std::string deals_of_it =
      concat("crm_pos_negocio n join item_r i on i.oid = n.oid where n.rpessoa = ", company.id);
  const auto deals =
      read_objects(crm, fixed::class_deal,
                   concat(deals_of_it, " and n.oid in (", context.visible().deals_of(company.id), ")"));
  const auto all = to_int64(single_value(crm, "select count(*) from " + deals_of_it));
  Deletion deletion;
  if (all != static_cast<std::int64_t>(deals.size())) {
    deletion.refusal = "Há negócios de outras equipes com esta empresa.";
  }
  std::vector<DeletedObject> contacts;
  for (const Contact& contact : read_contacts(context, company.id)) {
    contacts.push_back({contact.id, fixed::class_person, contact.name});
  }
  const auto activities = activities_where(crm, "rpessoa", company.id);
  describe(deletion, contacts, "contato", "contatos");
  describe(deletion, deals, "negócio", "negócios");
  describe(deletion, activities, "atividade", "atividades", false);
  describe_files(deletion, crm,
                 concat("ritem = ", company.id,
                        " or ritem in (select oid from crm_pos_negocio where rpessoa = ", company.id, ")"));
  for (const auto& below : {activities, deals, contacts}) deletion.add(below);
  deletion.add({{company.id, fixed::class_company, company.name}});
  deletion.title = "Excluir empresa";
  deletion.area = "empresas";
  deletion.trail = company_trail(company);
  deletion.after = "/empresas";
  return deletion;
}

Deletion contact_deletion(Context& context) {
  context.visible().require_contact(context.id(0), context.id(1));
  const Company company = read_own_company(context, context.id(0));
  Deletion deletion;
  for (const Contact& contact : read_contacts(context, company.id)) {
    if (contact.id == context.id(1)) deletion.add({{contact.id, fixed::class_person, contact.name}});
  }
  if (deletion.objects.empty()) throw Refusal{404};
  const auto deals = to_int64(
      single_value(context.crm(), concat("select count(*) from crm_pos_negocio where rpessoa = ", company.id,
                                         " and rcontato = ", context.id(1))));
  if (deals != 0) {
    deletion.details.push_back(count_text(deals, "negócio continua", "negócios continuam") +
                               " com o nome dele.");
  }
  deletion.title = "Excluir contato";
  deletion.area = "empresas";
  deletion.trail = company_trail(company);
  deletion.after = company_address(company.id);
  return deletion;
}

Deletion deal_deletion(Context& context) {
  const Deal deal = read_deal(context, context.id());
  const auto activities = activities_where(context.crm(), "rnegociopossivel", deal.id);
  Deletion deletion;
  describe(deletion, activities, "atividade", "atividades", false);
  describe_files(deletion, context.crm(), concat("ritem = ", deal.id));
  deletion.add(activities);
  deletion.add({{deal.id, fixed::class_deal, deal.name}});
  deletion.title = "Excluir negócio";
  deletion.area = "negocios";
  deletion.trail = deal_trail(deal);
  deletion.after = "/negocios";
  return deletion;
}

Deletion activity_deletion(Context& context) {
  const Activity activity = read_activity(context, context.id());
  if (!context.visible().sees(activity.performer)) throw Refusal{404};
  Deletion deletion;
  deletion.add({{activity.id, fixed::class_activity, activity.kind_name}});
  if (activity.next) deletion.details.emplace_back("O próximo contato que ela planeja sai da agenda.");
  deletion.title = "Excluir atividade";
  deletion.area = "agenda";
  deletion.trail = company_trail(read_company(context, activity.company));
  deletion.after = activity.deal == 0 ? company_address(activity.company) : deal_address(activity.deal);
  return deletion;
}

Deletion city_deletion(Context& context) {
  context.require_administrator();
  const City city = read_city(context, context.id());
  const auto uses = to_int64(
      single_value(context.crm(), concat("select count(*) from endereco where rcidade = ", city.id)));
  Deletion deletion;
  deletion.add({{city.id, fixed::class_city, city.name}});
  if (uses != 0) {
    deletion.details.push_back(count_text(uses, "endereço continua", "endereços continuam") +
                               " nesta cidade.");
  }
  deletion.title = "Excluir cidade";
  deletion.area = "empresas";
  deletion.trail = city_trail();
  deletion.after = "/cidades";
  return deletion;
}

}  // namespace

void add_deletion_pages(Router& router) {
  add_deletion<company_deletion>(router, "/empresas/{}/excluir");
  add_deletion<contact_deletion>(router, "/empresas/{}/contatos/{}/excluir");
  add_deletion<deal_deletion>(router, "/negocios/{}/excluir");
  add_deletion<activity_deletion>(router, "/atividades/{}/excluir");
  add_deletion<city_deletion>(router, "/cidades/{}/excluir");
}

}  // namespace pradelis::site
