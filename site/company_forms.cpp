#include "site/company_forms.h"

#include "dataaccess/schema/fixed.h"
#include "site/identifiers.h"
#include "site/reference.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

Form name_form() {
  Form form;
  form.text("nome", "Nome fantasia").required().autocomplete("organization");
  form.text("razao", "Razão social").required().limit(200);
  return form;
}

void add_address(Form& form) {
  form.text("cidade", "Cidade").required().half().suggestions("/cidades/sugestoes");
  form.text("cep", "CEP").limit(9).half().keyboard("numeric").autocomplete("postal-code");
  form.text("rua", "Rua").autocomplete("address-line1");
  form.text("numero", "Número").limit(20).half();
  form.text("complemento", "Complemento").limit(80).half();
  form.text("bairro", "Bairro").limit(80).half();
  form.area("observacao", "Observação");
}

}  // namespace

const std::vector<Option>& company_situations() {
  static const std::vector<Option> options = {{fixed::category_prospect, "Prospecto"},
                                              {fixed::category_client, "Cliente"}};
  return options;
}

const RecordRow companies_row{"item", fixed::class_company};

Form new_company_form(Context& context) {
  Form form = name_form();
  form.choice("situacao", "Situação", company_situations()).required().half().value(fixed::category_prospect);
  form.choice("vendedor", "Vendedor", context.visible().salespeople())
      .required()
      .half()
      .value(context.person());
  add_address(form);
  return form;
}

Form company_change_form(const Company& company) {
  Form form = name_form();
  add_address(form);
  form.fill("nome", company.name).fill("razao", company.legal_name).fill("cidade", company.city);
  form.fill("cep", company.postal_code).fill("rua", company.street).fill("numero", company.house);
  form.fill("complemento", company.complement).fill("bairro", company.district);
  form.fill("observacao", company.note);
  return form.guard();
}

std::int32_t typed_city(Context& context, Form& form, const Company& present) {
  const std::string& name = form.text_of("cidade");
  if (name.empty()) return 0;
  if (const auto city = find_city(context.crm(), name)) return *city;
  if (to_upper(name) == to_upper(present.city)) return present.city_id;
  form.refuse("cidade", "Não há cidade cadastrada com esse nome.");
  return 0;
}

std::int32_t register_company(Context& context, Form& form, std::int32_t city) {
  const std::string result = context.crm().Cadastrar_Empresa(
      form.text_of("razao"), form.id_of("vendedor"), form.text_of("observacao"), form.text_of("nome"), city,
      form.text_of("cep"), form.text_of("bairro"), form.text_of("complemento"), form.text_of("numero"),
      form.text_of("rua"), form.id_of("situacao"));
  const auto company = parse_identifier(result);
  if (result.empty()) {
    form.refuse("A empresa não pôde ser classificada e não foi gravada. Fale com quem administra o sistema.");
  } else if (!company) {
    form.refuse("nome", result);
  }
  return company.value_or(0);
}

Form contact_form(Context& context, const Contact* contact) {
  auto roles = entries(context.crm(), ReferenceList::Roles);
  if (contact != nullptr) keep_option(roles, contact->role, contact->role_name);
  Form form;
  form.text("nome", "Nome").required();
  form.choice("cargo", "Cargo", std::move(roles)).required();
  return form;
}

}  // namespace pradelis::site
