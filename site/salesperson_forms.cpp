#include "site/salesperson_forms.h"

#include <utility>

#include "dataaccess/schema/fixed.h"
#include "site/group_data.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

/// No chain of superiors is longer; one that is a ring ends here.
constexpr int longest_chain = 500;

/// Those below whom a salesperson may stand: those whom the visitor sees, and branches.
std::vector<Option> superiors(Context& context) {
  auto options = receivers(context);
  each_row(context.crm(), "select oid, nome from filial_r order by nome, oid", 0, [&](const Row& row) {
    options.push_back({row.id(0), row.component_text(1)});
  });
  return options;
}

void add_place(Form& form, std::vector<Option> groups, std::vector<Option> superiors) {
  form.choice("grupo", "Grupo", std::move(groups))
      .required()
      .half()
      .hint("Decide quem vê os registros de quem.");
  form.choice("superior", "Abaixo de", std::move(superiors))
      .half()
      .hint("O lugar na árvore de vendedores. Sem escolha, fica no topo.");
}

}  // namespace

Form new_salesperson_form(Context& context) {
  context.require_administrator();
  Form form;
  form.text("nome", "Nome completo").required().shown_by_component();
  add_place(form, group_options(read_groups(context)), superiors(context));
  if (!context.user().maintenance) form.fill("superior", context.person());
  form.text("usuario", "Usuário")
      .required()
      .literal()
      .limit(60)
      .half()
      .hint("Com ele a pessoa entra no sistema.");
  form.password("senha", "Senha")
      .required()
      .limit(200)
      .half()
      .autocomplete("new-password")
      .hint("Ao menos 8 caracteres.");
  form.text("cidade", "Cidade").required().half().suggestions("/cidades/sugestoes");
  form.text("cep", "CEP").limit(9).half().keyboard("numeric");
  form.text("rua", "Rua");
  form.text("numero", "Número").limit(20).half();
  form.text("complemento", "Complemento").limit(80).half();
  form.text("bairro", "Bairro").limit(80).half();
  return form;
}

Form salesperson_form(Context& context, const Salesperson& person) {
  auto groups = group_options(read_groups(context));
  auto above = superiors(context);
  std::erase_if(above, [&](const Option& option) { return option.id == person.id; });
  keep_option(groups, person.group, person.group_name);
  keep_option(above, person.superior, person.superior_name);
  Form form;
  form.text("nome", "Nome completo").required().shown_by_component();
  add_place(form, std::move(groups), std::move(above));
  form.fill("nome", person.name).fill("grupo", person.group).fill("superior", person.superior);
  return form.guard();
}

void place_salesperson(Context& context, std::int32_t person, const std::string& name,
                       std::int32_t superior) {
  const Variant same = Variant::missing();
  context.crm().QLCBase()->AlterarItem(person, context.person(), to_component_text(name),
                                       superior == 0 ? fixed::system_object : superior, same, same, same);
}

bool stands_above(component::CRM& crm, std::int32_t person, std::int32_t superior) {
  for (int step = 0; step < longest_chain && superior != 0 && superior != fixed::system_object; ++step) {
    if (superior == person) return true;
    const Variant above = single_value(crm, concat("select rescopo from item where oid = ", superior));
    superior = above.is_null() ? 0 : to_int32(above);
  }
  return false;
}

}  // namespace pradelis::site
