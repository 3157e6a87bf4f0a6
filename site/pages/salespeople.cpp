#include "site/salespeople.h"
#include "dataaccess/schema/fixed.h"
#include "site/deletion.h"
#include "site/group_data.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "site/salesperson_forms.h"
#include "site/site.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

constexpr std::size_t shortest_password = 8;
/// Where `Logar`'s array has the visitor's code in the register of salespeople.
constexpr std::size_t own_salesperson_code = 7;

const std::vector<Link>& people_trail() {
  static const std::vector<Link> trail = {{"/equipe", "Equipe"}, {"/equipe/vendedores", "Vendedores"}};
  return trail;
}

/// The tree that the component writes; whom one chooses in it, one goes to.
void choose(Context& context) {
  context.require_administrator();
  const auto chosen = parse_identifier(context.request().query.get("vendedor"));
  if (chosen && find_salesperson(context, *chosen)) return context.redirect(salesperson_address(*chosen));
  SalespersonTree tree = read_salesperson_tree(context);
  std::vector<View> apart;
  for (const Option& person : tree.apart) {
    apart.push_back(View().set("name", person.label).set("page", salesperson_address(person.id)));
  }
  View view;
  view.flag("not_theirs", chosen.has_value())
      .set("tree", std::move(tree.html))
      .flag("any_apart", !apart.empty())
      .list("apart", std::move(apart));
  context.show("salespeople", "Vendedores", "equipe", std::move(view));
}

void show_person(Context& context) {
  const Salesperson person = read_salesperson(context, context.id());
  const Holdings holdings = read_holdings(context.crm(), person.id);
  const auto count = [](const std::vector<std::int32_t>& ids) { return std::to_string(ids.size()); };
  View view;
  view.set("page", salesperson_address(person.id)).set("login", person.login);
  view.optional("group", person.group_name).optional("superior", person.superior_name);
  view.set("companies", count(holdings.companies)).set("open_deals", count(holdings.open_deals));
  view.set("ended_deals", count(holdings.ended_deals));
  context.show("salesperson", person.name, "equipe", std::move(view));
}

void show_registration(Context& context, const Form& form) {
  context.show_form(form, {"Novo vendedor", "equipe", "Cadastrar vendedor", people_trail()});
}

void ask_registration(Context& context) {
  Form form = new_salesperson_form(context);
  if (const auto group = parse_identifier(context.request().query.get("grupo"))) form.fill("grupo", *group);
  show_registration(context, form);
}

void register_person(Context& context, Form& form, std::int32_t city) {
  NewSalesperson person;
  person.name = form.text_of("nome");
  person.login = form.text_of("usuario");
  person.password = form.text_of("senha");
  person.groups = {form.id_of("grupo")};
  person.city = city;
  person.postal_code = form.text_of("cep");
  person.street = form.text_of("rua");
  person.house = form.text_of("numero");
  person.complement = form.text_of("complemento");
  person.district = form.text_of("bairro");
  const Variant& own_code = context.user().information.get<Variant::Array>().at(own_salesperson_code);
  const std::int32_t registered =
      register_salesperson(context.crm(), person, context.person(), to_int32(own_code));
  if (registered == 0) {
    form.refuse("O cadastro ficaria incompleto e não foi feito. Fale com quem administra o sistema.");
  } else if (form.id_of("superior") != 0) {
    place_salesperson(context, registered, person.name, form.id_of("superior"));
  }
}

void take_registration(Context& context) {
  Form form = new_salesperson_form(context);
  form.read(context.request().form);
  if (form.text_of("senha").size() < shortest_password && !form.text_of("senha").empty()) {
    form.refuse("senha", "A senha precisa de ao menos 8 caracteres.");
  }
  const auto city = find_city(context.crm(), form.text_of("cidade"));
  if (!city && !form.text_of("cidade").empty()) {
    form.refuse("cidade", "Não há cidade cadastrada com esse nome.");
  }
  const bool done = !form.refused() && attempt_whole(context.crm(), groups_row, form,
                                                     [&] { register_person(context, form, *city); });
  if (!done) return show_registration(context, form);
  context.site().sessions().team_changed();
  context.redirect("/equipe", "Vendedor cadastrado.");
}

void show_change(Context& context, const Form& form, const Salesperson& person) {
  context.show_form(form, {"Alterar vendedor", "equipe", "Salvar alterações", salesperson_trail(person)});
}

void ask_change(Context& context) {
  const Salesperson person = read_salesperson(context, context.id());
  show_change(context, salesperson_form(context, person), person);
}

void change_person(Context& context) {
  component::CRM& crm = context.crm();
  const Salesperson person = read_salesperson(context, context.id());
  Form form = salesperson_form(context, person);
  const auto present = [&] { return salesperson_form(context, read_salesperson(context, person.id)); };
  const bool done = form.read(context.request().form) && change_record(crm, groups_row, form, present, [&] {
                      if (stands_above(crm, person.id, form.id_of("superior"))) {
                        return form.refuse("superior", "A pessoa ficaria abaixo de si mesma.");
                      }
                      place_salesperson(context, person.id, form.text_of("nome"), form.id_of("superior"));
                      if (form.id_of("grupo") != person.group)
                        crm.Alterar_Grupo_Vendedor(form.id_of("grupo"), person.id);
                      change_row(crm, concat("select nome from vendedocad where rpessoa = ", person.id),
                                 [&](dataaccess::Recordset& row) { row.set("nome", form.text_of("nome")); });
                    });
  if (!done) return show_change(context, form, person);
  context.site().sessions().team_changed();
  context.redirect(salesperson_address(person.id), "Alterações salvas.");
}

/// Records have to be handed over first, since the lists offer nobody who was deleted.
Form deletion_form(Context& context, const Salesperson& person) {
  const Holdings holdings = read_holdings(context.crm(), person.id);
  Form form;
  if (!holdings.companies.empty() || !holdings.open_deals.empty()) {
    form.refuse("Passe antes as empresas e os negócios em aberto a outro vendedor.");
  }
  return form.guard(concat(holdings.companies.size(), " ", holdings.open_deals.size()));
}

void show_deletion(Context& context, const Form& form, const Salesperson& person) {
  FormPage page{"Excluir vendedor", "equipe", "Excluir vendedor", salesperson_trail(person)};
  page.lead = person.name + " deixa de entrar no sistema e de aparecer nas listas.";
  page.danger = true;
  context.show_form(form, page);
}

void ask_deletion(Context& context) {
  const Salesperson person = read_salesperson(context, context.id());
  show_deletion(context, deletion_form(context, person), person);
}

void delete_person(Context& context) {
  const Salesperson person = read_salesperson(context, context.id());
  Form form = deletion_form(context, person);
  const auto present = [&] { return deletion_form(context, read_salesperson(context, person.id)); };
  const bool done = form.read(context.request().form) &&
                    change_record(context.crm(), {"item", person.id}, form, present, [&] {
                      enter_deletion(context, {person.id, fixed::class_person, person.name});
                      if (person.account == 0) return;
                      enter_deletion(context, {person.account, fixed::class_user, person.login});
                    });
  if (!done) return show_deletion(context, form, person);
  context.site().sessions().team_changed();
  context.redirect("/equipe", "Vendedor excluído.");
}

}  // namespace

void add_salesperson_pages(Router& router) {
  router.get("/equipe/vendedores", choose);
  router.get("/equipe/vendedores/novo", ask_registration);
  router.post("/equipe/vendedores/novo", take_registration);
  router.get("/equipe/vendedores/{}", show_person);
  router.get("/equipe/vendedores/{}/alterar", ask_change);
  router.post("/equipe/vendedores/{}/alterar", change_person);
  router.get("/equipe/vendedores/{}/excluir", ask_deletion);
  router.post("/equipe/vendedores/{}/excluir", delete_person);
}

}  // namespace pradelis::site
