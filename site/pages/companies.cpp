#include "dataaccess/schema/fixed.h"
#include "site/company_forms.h"
#include "site/pages/pages.h"
#include "site/salesperson_data.h"
#include "site/transaction.h"

namespace pradelis::site {
namespace {

void show_registration(Context& context, const Form& form) {
  context.show_form(form, {"Nova empresa", "empresas", "Cadastrar empresa", {{"/empresas", "Empresas"}}});
}

void ask_registration(Context& context) { show_registration(context, new_company_form(context)); }

void register_new(Context& context) {
  Form form = new_company_form(context);
  form.read(context.request().form);
  const std::int32_t city = typed_city(context, form);
  std::int32_t company = 0;
  const bool done = !form.refused() && attempt_whole(context.crm(), companies_row, form, [&] {
    company = register_company(context, form, city);
  });
  if (!done) return show_registration(context, form);
  context.redirect(company_address(company), "Empresa cadastrada.");
}

void show_change(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Alterar empresa", "empresas", "Salvar alterações", company_trail(company)});
}

void ask_change(Context& context) {
  const Company company = read_company(context, context.id());
  show_change(context, company_change_form(company), company);
}

void change_company(Context& context) {
  component::CRM& crm = context.crm();
  const Company company = read_company(context, context.id());
  Form form = company_change_form(company);
  form.read(context.request().form);
  const std::int32_t city = typed_city(context, form, company);
  const auto present = [&] { return company_change_form(read_company(context, company.id)); };
  const bool done = !form.refused() && change_record(crm, {"item", company.id}, form, present, [&] {
    Variant oid = company.id;
    crm.Alterar_Empresa(oid, form.text_of("razao"), context.person(), form.text_of("observacao"),
                        form.text_of("nome"), city, form.text_of("cep"), form.text_of("bairro"),
                        form.text_of("complemento"), form.text_of("numero"), form.text_of("rua"));
  });
  if (!done) return show_change(context, form, company);
  context.redirect(company_address(company.id), "Alterações salvas.");
}

void show_transfer(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Passar a outro vendedor", "empresas", "Passar empresa", company_trail(company),
                           "Hoje com " + company.owner_name + "."});
}

void ask_transfer(Context& context) {
  const Company company = read_own_company(context, context.id());
  show_transfer(context, transfer_form(context, company.owner), company);
}

void transfer(Context& context) {
  const Company company = read_own_company(context, context.id());
  Form form = transfer_form(context, company.owner);
  const auto present = [&] { return transfer_form(context, read_own_company(context, context.id()).owner); };
  const bool done = form.read(context.request().form) &&
                    change_record(context.crm(), {"item", company.id}, form, present, [&] {
                      context.crm().Alterar_Vendedor_Prospect(form.id_of("vendedor"), company.id);
                    });
  if (!done) return show_transfer(context, form, company);
  context.redirect(company_address(company.id), "Empresa passada a outro vendedor.");
}

void make_client(Context& context) {
  const Company company = read_company(context, context.id());
  if (!company.client) context.crm().Cadastrar_Classificacao(company.id, dataaccess::fixed::category_client);
  context.redirect(company_address(company.id), "A empresa agora é cliente.");
}

}  // namespace

void add_company_pages(Router& router) {
  router.get("/empresas/nova", ask_registration);
  router.post("/empresas/nova", register_new);
  router.get("/empresas/{}/alterar", ask_change);
  router.post("/empresas/{}/alterar", change_company);
  router.get("/empresas/{}/passar", ask_transfer);
  router.post("/empresas/{}/passar", transfer);
  router.post("/empresas/{}/cliente", make_client);
}

}  // namespace pradelis::site
