#include "site/company_forms.h"
#include "site/pages/pages.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// A contact of this company, and the company.
struct Entry {
  Company company;
  Contact contact;
};

Entry read_entry(Context& context) {
  context.visible().require_contact(context.id(0), context.id(1));
  Entry entry{read_company(context, context.id(0)), {}};
  for (const Contact& contact : read_contacts(context, entry.company.id)) {
    if (contact.id == context.id(1)) entry.contact = contact;
  }
  return entry;
}

Form change_form(Context& context, const Contact& contact) {
  Form form = contact_form(context, &contact);
  form.fill("nome", contact.name).fill("cargo", contact.role);
  return form.guard();
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
  const bool done =
      form.read(context.request().form) && attempt_whole(context.crm(), {"item", company.id}, form, [&] {
        context.crm().Cadastrar_Contato(context.person(), form.text_of("nome"), form.id_of("cargo"),
                                        company.id);
      });
  if (!done) return show_registration(context, form, company);
  context.redirect(company_address(company.id), "Contato cadastrado.");
}

void show_change(Context& context, const Form& form, const Entry& entry) {
  FormPage page{"Alterar contato", "empresas", "Salvar alterações", company_trail(entry.company)};
  if (context.visible().sees(entry.company.owner)) {
    page.deletion = concat(company_address(entry.company.id), "/contatos/", entry.contact.id, "/excluir");
  }
  context.show_form(form, page);
}

void ask_change(Context& context) {
  const Entry entry = read_entry(context);
  show_change(context, change_form(context, entry.contact), entry);
}

void change_contact(Context& context) {
  const Entry entry = read_entry(context);
  Form form = change_form(context, entry.contact);
  const auto present = [&] { return change_form(context, read_entry(context).contact); };
  const bool done = form.read(context.request().form) &&
                    change_record(context.crm(), {"item", entry.contact.id}, form, present, [&] {
                      context.crm().Alterar_Contato(entry.contact.id, context.person(), form.text_of("nome"),
                                                    form.id_of("cargo"), entry.company.id);
                    });
  if (!done) return show_change(context, form, entry);
  context.redirect(company_address(entry.company.id), "Contato alterado.");
}

}  // namespace

void add_contact_pages(Router& router) {
  router.get("/empresas/{}/contatos/novo", ask_registration);
  router.post("/empresas/{}/contatos/novo", register_contact);
  router.get("/empresas/{}/contatos/{}/alterar", ask_change);
  router.post("/empresas/{}/contatos/{}/alterar", change_contact);
}

}  // namespace pradelis::site
