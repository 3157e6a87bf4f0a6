#include "site/company_data.h"
#include "site/context.h"
#include "site/deal_data.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/transaction.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// The form of a new deal, or of `deal`.
Form deal_form(Context& context, std::int32_t company, const Deal* deal) {
  auto contacts = contact_options(context, company);
  auto indicators = contacts;
  auto classes = entries(context.crm(), ReferenceList::ProductClasses);
  if (deal != nullptr) {
    keep_option(contacts, deal->contact, deal->contact_name);
    keep_option(indicators, deal->indicator, deal->indicator_name);
    for (const Option& kept : deal->classes) keep_option(classes, kept.id, kept.label);
  }
  Form form;
  if (deal == nullptr) form.text("nome", "Nome do negócio").required();
  form.date("data", "Fechamento previsto").half();
  form.money("valor", "Valor previsto").required().half();
  form.choice("contato", "Contato", std::move(contacts)).half();
  form.choice("indicador", "Indicado por", std::move(indicators)).half();
  if (deal == nullptr) {
    form.choice("vendedor", "Vendedor", context.visible().salespeople()).required().value(context.person());
  }
  if (!classes.empty()) form.checks("classes", "Classes de produto", std::move(classes));
  auto& note = form.area("observacao", "Observação");
  if (deal != nullptr && !deal->note.empty()) note.hint("Em branco, mantém a observação que já existe.");
  return form;
}

std::string class_list(const Form& form) {
  return form.has("classes") ? join_identifiers(form.ids_of("classes")) : std::string();
}

void show_registration(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Novo negócio", "negocios", "Cadastrar negócio", company_trail(company),
                           "Com " + company.name + "."});
}

void ask_registration(Context& context) {
  const Company company = read_company(context, context.id());
  show_registration(context, deal_form(context, company.id, nullptr), company);
}

void register_deal(Context& context) {
  const Company company = read_company(context, context.id());
  Form form = deal_form(context, company.id, nullptr);
  Variant result;
  const bool done =
      form.read(context.request().form) && attempt_whole(context.crm(), {"item", company.id}, form, [&] {
        std::int16_t step = 0;
        result = context.crm().Cadastrar_Negocio(
            company.id, form.id_of("contato"), form.id_of("vendedor"), form.date_text_of("data"),
            class_list(form), form.id_of("indicador"), form.text_of("observacao"), form.text_of("nome"),
            form.money_of("valor", context.crm()), step);
        if (result.is(VariantType::Text)) form.refuse("nome", result.get<std::string>());
      });
  if (!done) return show_registration(context, form, company);
  context.redirect(deal_address(to_int32(result)), "Negócio cadastrado.");
}

void show_change(Context& context, const Form& form, const Deal& deal) {
  context.show_form(form, {"Alterar negócio", "negocios", "Salvar alterações", deal_trail(deal)});
}

/// The form of a deal as it is stored.
Form change_form(Context& context, const Deal& deal) {
  Form form = deal_form(context, deal.company, &deal);
  if (deal.expected) form.fill("data", *deal.expected);
  form.fill("valor", amount_text(deal.expected_value)).fill("contato", deal.contact);
  form.fill("indicador", deal.indicator).fill("observacao", deal.note);
  std::vector<std::int32_t> classes;
  for (const Option& one : deal.classes) classes.push_back(one.id);
  if (form.has("classes")) form.fill("classes", classes);
  return form.guard();
}

void ask_change(Context& context) {
  const Deal deal = read_deal(context, context.id());
  show_change(context, change_form(context, deal), deal);
}

void change_deal(Context& context) {
  const Deal deal = read_deal(context, context.id());
  Form form = change_form(context, deal);
  const auto present = [&] { return change_form(context, read_deal(context, deal.id)); };
  const bool done = form.read(context.request().form) &&
                    change_record(context.crm(), {"item", deal.id}, form, present, [&] {
                      std::int16_t step = 0;
                      context.crm().Alterar_Negocio(deal.id, form.id_of("contato"), deal.salesperson,
                                                    form.date_text_of("data"), class_list(form),
                                                    form.id_of("indicador"), form.text_of("observacao"),
                                                    form.money_of("valor", context.crm()), step);
                    });
  if (!done) return show_change(context, form, deal);
  context.redirect(deal_address(deal.id), "Alterações salvas.");
}

}  // namespace

void add_deal_pages(Router& router) {
  router.get("/empresas/{}/negocios/novo", ask_registration);
  router.post("/empresas/{}/negocios/novo", register_deal);
  router.get("/negocios/{}/alterar", ask_change);
  router.post("/negocios/{}/alterar", change_deal);
}

}  // namespace pradelis::site
