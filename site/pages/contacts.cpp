#include "site/company_data.h"
#include "site/context.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

Form contact_form(Context& context) {
  Form form;
  form.text("nome", "Nome").required().autocomplete("off");
  form.choice("cargo", "Cargo", entries(context.crm(), ReferenceList::Roles)).required();
  return form;
}

void show_registration(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Novo contato", "empresas", "Cadastrar contato", company_trail(company)});
}

void ask_registration(Context& context) {
  show_registration(context, contact_form(context), read_company(context, context.id()));
}

void register_contact(Context& context) {
  const Company company = read_company(context, context.id());
  Form form = contact_form(context);
  const bool done = form.read(context.request().form) && attempt(form, [&] {
                      context.crm().Cadastrar_Contato(context.person(), form.text_of("nome"),
                                                      form.id_of("cargo"), company.id);
                    });
  if (!done) return show_registration(context, form, company);
  context.redirect(company_address(company.id), "Contato cadastrado.");
}

void show_change(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Alterar contato", "empresas", "Salvar alterações", company_trail(company)});
}

void ask_change(Context& context) {
  context.visible().require_contact(context.id(0), context.id(1));
  const Company company = read_company(context, context.id(0));
  Form form = contact_form(context);
  for (const Contact& contact : read_contacts(context, company.id)) {
    if (contact.id == context.id(1)) form.fill("nome", contact.name).fill("cargo", contact.role);
  }
  show_change(context, form, company);
}

void change_contact(Context& context) {
  context.visible().require_contact(context.id(0), context.id(1));
  const Company company = read_company(context, context.id(0));
  Form form = contact_form(context);
  const bool done = form.read(context.request().form) && attempt(form, [&] {
                      context.crm().Alterar_Contato(context.id(1), context.person(), form.text_of("nome"),
                                                    form.id_of("cargo"), company.id);
                    });
  if (!done) return show_change(context, form, company);
  context.redirect(company_address(company.id), "Contato alterado.");
}

}  // namespace

void add_contact_pages(Router& router) {
  router.get("/empresas/{}/contatos/novo", ask_registration);
  router.post("/empresas/{}/contatos/novo", register_contact);
  router.get("/empresas/{}/contatos/{}/alterar", ask_change);
  router.post("/empresas/{}/contatos/{}/alterar", change_contact);
}

}  // namespace pradelis::site
