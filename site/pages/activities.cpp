#include "site/activity_data.h"
#include "site/company_data.h"
#include "site/context.h"
#include "site/deal_data.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "site/transaction.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// The company's open deals that the visitor may see.
std::vector<Option> open_deals(Context& context, std::int32_t company) {
  std::vector<Option> deals;
  each_row(context.crm(),
           concat("select n.oid, i.nome", deal_sources, " where n.fechamento is null and n.oid in (",
                  context.visible().deals_of(company), ") order by i.nome, n.oid"),
           0, [&](const Row& row) {
             deals.push_back({row.id(0), row.text(1)});
           });
  return deals;
}

/// The form of a new activity, or of `activity`.
Form activity_form(Context& context, std::int32_t company, const Activity* activity) {
  auto kinds = entries(context.crm(), ReferenceList::ActivityKinds);
  auto next_kinds = kinds;
  auto contacts = contact_options(context, company);
  auto deals = open_deals(context, company);
  auto people = context.visible().salespeople();
  if (activity != nullptr) {
    keep_option(kinds, activity->kind, activity->kind_name);
    keep_option(next_kinds, activity->next_kind, activity->next_kind_name);
    keep_option(contacts, activity->contact, activity->contact_name);
    keep_option(deals, activity->deal, activity->deal_name);
    keep_option(people, activity->next_person, activity->next_person_name);
  }
  Form form;
  const bool no_kinds = kinds.empty();
  auto& kind = form.choice("atividade", "O que foi feito", std::move(kinds)).required().half();
  if (no_kinds) kind.hint("Ainda não há tipos de atividade. Quem administra o sistema os inclui em Listas.");
  form.date("data", "Quando").required().half().value(today());
  form.choice("contato", "Com quem", std::move(contacts)).half();
  form.choice("negocio", "Negócio", std::move(deals)).half();
  form.area("observacao", "Observação");
  form.date("proximo", "Próximo contato").half().hint("Em branco, nada fica na agenda.");
  form.choice("proxima", "O que fazer", std::move(next_kinds)).half();
  form.choice("responsavel", "Quem faz", std::move(people)).half().value(context.person());
  return form;
}

/// Reads the form, and checks what its dates say together.
bool read_activity_form(Context& context, Form& form) {
  if (!form.read(context.request().form)) return false;
  const std::int32_t done = day_number(*form.date_of("data"));
  if (done > day_number(today())) form.refuse("data", "A data ainda não chegou.");
  const auto next = form.date_of("proximo");
  if (next && day_number(*next) < done) form.refuse("proximo", "Fica antes da atividade.");
  if (next && form.id_of("responsavel") == 0) form.refuse("responsavel", "Escolha quem faz.");
  if (!next && form.id_of("proxima") != 0) form.refuse("proximo", "Diga quando.");
  return !form.refused();
}

/// What the form plans; nothing without a date.
struct Plan {
  explicit Plan(const Form& form) {
    const auto date = form.date_of("proximo");
    if (!date) return;
    when = *date;
    person = form.id_of("responsavel");
    if (form.id_of("proxima") != 0) kind = form.id_of("proxima");
  }
  Variant when = Variant::null(), kind = Variant::null(), person = Variant::null();
};

std::string kind_name(Context& context, std::int32_t kind) {
  return plain_text(single_value(context.crm(), concat("select nome from item where oid = ", kind)));
}

/// Where the activity shows.
std::string page_of(std::int32_t company, std::int32_t deal) {
  return deal == 0 ? company_address(company) : deal_address(deal);
}

void show_registration(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Registrar atividade", "agenda", "Registrar atividade", company_trail(company),
                           "Com " + company.name + "."});
}

void ask_registration(Context& context) {
  const Company company = read_company(context, context.id());
  Form form = activity_form(context, company.id, nullptr);
  const Parameters& query = context.request().query;
  if (const auto deal = parse_identifier(query.get("negocio"))) form.fill("negocio", *deal);
  if (const auto kind = parse_identifier(query.get("atividade"))) form.fill("atividade", *kind);
  show_registration(context, form, company);
}

void register_activity(Context& context) {
  const Company company = read_company(context, context.id());
  Form form = activity_form(context, company.id, nullptr);
  const bool done =
      read_activity_form(context, form) && attempt_whole(context.crm(), {"item", company.id}, form, [&] {
        const Plan plan(form);
        const std::int32_t kind = form.id_of("atividade");
        context.crm().Cadastrar_Atividade(company.id, form.id_of("negocio"), kind, context.person(),
                                          form.id_of("contato"), *form.date_of("data"),
                                          form.text_of("observacao"), plan.when, plan.kind, now(),
                                          kind_name(context, kind), plan.person);
      });
  if (!done) return show_registration(context, form, company);
  context.redirect(page_of(company.id, form.id_of("negocio")), "Atividade registrada.");
}

void show_change(Context& context, const Form& form, const Activity& activity) {
  const Company company = read_company(context, activity.company);
  FormPage page{"Alterar atividade", "agenda", "Salvar alterações", company_trail(company),
                "Com " + company.name + "."};
  if (context.visible().sees(activity.performer)) page.deletion = activity_address(activity.id) + "/excluir";
  context.show_form(form, page);
}

/// The form of an activity as it is stored.
Form change_form(Context& context, const Activity& activity) {
  Form form = activity_form(context, activity.company, &activity);
  form.fill("atividade", activity.kind).fill("contato", activity.contact).fill("negocio", activity.deal);
  if (activity.date) form.fill("data", *activity.date);
  form.fill("observacao", activity.note).fill("proxima", activity.next_kind);
  form.fill("responsavel", activity.next_person);
  if (activity.next) form.fill("proximo", *activity.next);
  form.guard();
  if (!activity.next) form.fill("responsavel", context.person());
  return form;
}

void ask_change(Context& context) {
  const Activity activity = read_activity(context, context.id());
  show_change(context, change_form(context, activity), activity);
}

void change_activity(Context& context) {
  const Activity activity = read_activity(context, context.id());
  Form form = change_form(context, activity);
  const auto present = [&] { return change_form(context, read_activity(context, activity.id)); };
  const bool done = read_activity_form(context, form) &&
                    change_record(context.crm(), {"item", activity.id}, form, present, [&] {
                      const Plan plan(form);
                      context.crm().Alterar_Atividade(
                          activity.company, form.id_of("negocio"), activity.performer, form.id_of("contato"),
                          *form.date_of("data"), plan.when, activity.id, form.text_of("observacao"),
                          form.id_of("atividade"), plan.kind, plan.person);
                    });
  if (!done) return show_change(context, form, activity);
  context.redirect(page_of(activity.company, form.id_of("negocio")), "Alterações salvas.");
}

}  // namespace

void add_activity_pages(Router& router) {
  router.get("/empresas/{}/atividades/nova", ask_registration);
  router.post("/empresas/{}/atividades/nova", register_activity);
  router.get("/atividades/{}/alterar", ask_change);
  router.post("/atividades/{}/alterar", change_activity);
}

}  // namespace pradelis::site
