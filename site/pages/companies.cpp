#include "dataaccess/schema/fixed.h"
#include "site/company_data.h"
#include "site/context.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

const std::vector<Option>& situations() {
  static const std::vector<Option> options = {{fixed::category_prospect, "Prospecto"},
                                              {fixed::category_client, "Cliente"}};
  return options;
}

Form company_form(Context& context, bool registering) {
  Form form;
  form.text("nome", "Nome fantasia").required().autocomplete("organization");
  form.text("razao", "Razão social").required().limit(200);
  if (registering) {
    form.choice("situacao", "Situação", situations()).required().half().value(fixed::category_prospect);
    form.choice("vendedor", "Vendedor", context.visible().salespeople())
        .required()
        .half()
        .value(context.person());
  }
  form.text("cidade", "Cidade").required().half().suggestions("/cidades/sugestoes");
  form.text("cep", "CEP").limit(9).half().keyboard("numeric").autocomplete("postal-code");
  form.text("rua", "Rua").autocomplete("address-line1");
  form.text("numero", "Número").limit(20).half();
  form.text("complemento", "Complemento").limit(80).half();
  form.text("bairro", "Bairro").limit(80).half();
  form.area("observacao", "Observação");
  return form;
}

/// The city that was typed; refuses the form when there is none of that name.
std::int32_t typed_city(Context& context, Form& form) {
  const auto city = find_city(context.crm(), form.text_of("cidade"));
  if (!city) form.refuse("cidade", "Não há cidade cadastrada com esse nome.");
  return city.value_or(0);
}

void show_registration(Context& context, const Form& form) {
  context.show_form(form, {"Nova empresa", "empresas", "Cadastrar empresa", {{"/empresas", "Empresas"}}});
}

void ask_registration(Context& context) { show_registration(context, company_form(context, true)); }

void take_result(Form& form, const std::string& result) {
  if (result.empty()) {
    form.refuse("A empresa foi gravada, mas não pôde ser classificada. Fale com quem administra o sistema.");
  } else if (!parse_identifier(result)) {
    form.refuse("nome", result);
  }
}

void register_company(Context& context) {
  Form form = company_form(context, true);
  form.read(context.request().form);
  const std::int32_t city = form.text_of("cidade").empty() ? 0 : typed_city(context, form);
  if (form.refused()) return show_registration(context, form);
  std::string result;
  attempt(form, [&] {
    result = context.crm().Cadastrar_Empresa(
        form.text_of("razao"), form.id_of("vendedor"), form.text_of("observacao"), form.text_of("nome"), city,
        form.text_of("cep"), form.text_of("bairro"), form.text_of("complemento"), form.text_of("numero"),
        form.text_of("rua"), form.id_of("situacao"));
    take_result(form, result);
  });
  if (form.refused()) return show_registration(context, form);
  context.redirect("/empresas/" + result, "Empresa cadastrada.");
}

void show_change(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Alterar empresa", "empresas", "Salvar alterações", company_trail(company)});
}

void ask_change(Context& context) {
  const Company company = read_company(context, context.id());
  Form form = company_form(context, false);
  form.fill("nome", company.name).fill("razao", company.legal_name).fill("cidade", company.city);
  form.fill("cep", company.postal_code).fill("rua", company.street).fill("numero", company.house);
  form.fill("complemento", company.complement).fill("bairro", company.district);
  form.fill("observacao", company.note);
  show_change(context, form, company);
}

void change_company(Context& context) {
  const Company company = read_company(context, context.id());
  Form form = company_form(context, false);
  form.read(context.request().form);
  const std::int32_t city = form.text_of("cidade").empty() ? 0 : typed_city(context, form);
  if (form.refused()) return show_change(context, form, company);
  const bool done = attempt(form, [&] {
    Variant oid = context.id();
    context.crm().Alterar_Empresa(oid, form.text_of("razao"), context.person(), form.text_of("observacao"),
                                  form.text_of("nome"), city, form.text_of("cep"), form.text_of("bairro"),
                                  form.text_of("complemento"), form.text_of("numero"), form.text_of("rua"));
  });
  if (!done) return show_change(context, form, company);
  context.redirect(company_address(context.id()), "Alterações salvas.");
}

void show_transfer(Context& context, const Form& form, const Company& company) {
  context.show_form(form, {"Passar a outro vendedor", "empresas", "Passar empresa", company_trail(company),
                           "Hoje com " + company.owner_name + "."});
}

/// A company whose owner's records the visitor may see: clients of other teams are not his to give away.
Company read_own_company(Context& context) {
  Company company = read_company(context, context.id());
  if (!context.visible().sees(company.owner)) throw Refusal{404};
  return company;
}

Form transfer_form(Context& context) {
  Form form;
  form.choice("vendedor", "Novo vendedor", context.visible().salespeople()).required();
  return form;
}

void ask_transfer(Context& context) {
  show_transfer(context, transfer_form(context), read_own_company(context));
}

void transfer(Context& context) {
  const Company company = read_own_company(context);
  Form form = transfer_form(context);
  const bool done = form.read(context.request().form) && attempt(form, [&] {
                      context.crm().Alterar_Vendedor_Prospect(form.id_of("vendedor"), company.id);
                    });
  if (!done) return show_transfer(context, form, company);
  context.redirect(company_address(company.id), "Empresa passada a outro vendedor.");
}

void make_client(Context& context) {
  const Company company = read_company(context, context.id());
  if (!company.client) context.crm().Cadastrar_Classificacao(company.id, fixed::category_client);
  context.redirect(company_address(company.id), "A empresa agora é cliente.");
}

}  // namespace

void add_company_pages(Router& router) {
  router.get("/empresas/nova", ask_registration);
  router.post("/empresas/nova", register_company);
  router.get("/empresas/{}/alterar", ask_change);
  router.post("/empresas/{}/alterar", change_company);
  router.get("/empresas/{}/passar", ask_transfer);
  router.post("/empresas/{}/passar", transfer);
  router.post("/empresas/{}/cliente", make_client);
}

}  // namespace pradelis::site
