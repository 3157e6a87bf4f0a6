#include <algorithm>
#include <map>

#include "site/context.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "site/salespeople.h"
#include "site/site.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::int32_t root_scope = 7;
constexpr std::size_t shortest_password = 8;
/// Where `Logar`'s array has the visitor's code in the register of salespeople.
constexpr std::size_t own_salesperson_code = 7;

struct Group {
  std::int32_t id = 0;
  std::string name;
  std::int32_t parent = 0;
  std::string note;
};

void require_administrator(Context& context) {
  if (!context.visible().administers()) throw Refusal{404};
}

/// The groups that the visitor administers, by name.
std::vector<Group> read_groups(Context& context) {
  std::string condition;
  if (!context.user().maintenance)
    condition = concat(" and oid in (", join_identifiers(context.user().groups), ")");
  std::vector<Group> groups;
  each_row(context.crm(),
           concat("select oid, nome, rescopo, observacao from item_r where cid = 18", condition,
                  " order by nome, oid"),
           0, [&](const Row& row) {
             groups.push_back({row.id(0), row.text(1), row.id(2), row.text(3)});
           });
  return groups;
}

using Members = std::multimap<std::int32_t, std::string>;

Members read_members(Context& context, const std::vector<Group>& groups) {
  Members members;
  if (groups.empty()) return members;
  std::vector<std::int32_t> ids;
  for (const Group& group : groups) ids.push_back(group.id);
  each_row(context.crm(),
           concat("select a.rgrupo, i.nome from agrupamento a join item_r i on i.oid = a.ritem"
                  " where a.rpapel = 26735 and a.rgrupo in (",
                  join_identifiers(ids), ") order by i.nome"),
           0, [&](const Row& row) { members.emplace(row.id(0), row.text(1)); });
  return members;
}

bool is_among(const std::vector<Group>& groups, std::int32_t id) {
  return std::any_of(groups.begin(), groups.end(), [&](const Group& group) { return group.id == id; });
}

/// `depth` bounds the walk: a group may have been given one of its own descendants as parent.
std::vector<View> branch(const std::vector<Group>& groups, const Members& members, std::int32_t parent,
                         bool top, int depth = 0) {
  std::vector<View> views;
  if (depth > 40) return views;
  for (const Group& group : groups) {
    if (top ? is_among(groups, group.parent) : group.parent != parent) continue;
    std::vector<View> people;
    const auto [first, last] = members.equal_range(group.id);
    for (auto member = first; member != last; ++member)
      people.push_back(View().set("person", member->second));
    auto children = branch(groups, members, group.id, false, depth + 1);
    View view;
    view.set("name", group.name).set("id", std::to_string(group.id));
    view.flag("peopled", !people.empty()).list("people", std::move(people));
    view.flag("parent", !children.empty()).list("groups", std::move(children));
    views.push_back(std::move(view));
  }
  return views;
}

void show_team(Context& context) {
  require_administrator(context);
  const auto groups = read_groups(context);
  View view;
  view.flag("none", groups.empty()).flag("maintenance", context.user().maintenance);
  view.list("groups", branch(groups, read_members(context, groups), 0, true));
  context.show("team", "Equipe", "equipe", std::move(view));
}

std::vector<Option> group_options(const std::vector<Group>& groups) {
  std::vector<Option> options;
  for (const Group& group : groups) options.push_back({group.id, group.name});
  return options;
}

const std::vector<Link>& team_trail() {
  static const std::vector<Link> trail = {{"/equipe", "Equipe"}};
  return trail;
}

Form group_form(Context& context) {
  Form form;
  form.text("nome", "Nome do grupo").required();
  auto& parent = form.choice("pai", "Abaixo de", group_options(read_groups(context)));
  if (context.user().maintenance) {
    parent.hint("Sem escolha, o grupo fica no topo.");
  } else {
    parent.required();
  }
  form.area("observacao", "Observação");
  return form;
}

void show_group_registration(Context& context, const Form& form) {
  context.show_form(form, {"Novo grupo", "equipe", "Criar grupo", team_trail()});
}

void ask_group(Context& context) {
  require_administrator(context);
  Form form = group_form(context);
  if (const auto parent = parse_identifier(context.request().query.get("pai"))) form.fill("pai", *parent);
  show_group_registration(context, form);
}

void create_group(Context& context) {
  require_administrator(context);
  Form form = group_form(context);
  const bool done = form.read(context.request().form) && attempt(form, [&] {
                      const std::int32_t parent = form.id_of("pai");
                      context.crm().cGrupoUsuarios()->Cadastrar_Grupo(context.person(), form.text_of("nome"),
                                                                      parent == 0 ? root_scope : parent,
                                                                      form.text_of("observacao"));
                    });
  if (!done) return show_group_registration(context, form);
  context.site().sessions().team_changed();
  context.redirect("/equipe", "Grupo criado.");
}

Group read_group(Context& context) {
  context.visible().require_group(context.id());
  Group group;
  each_row(context.crm(),
           concat("select oid, nome, rescopo, observacao from item_r where oid = ", context.id()), 1,
           [&](const Row& row) {
             group = {row.id(0), row.text(1), row.id(2), row.text(3)};
           });
  return group;
}

Form renaming_form() {
  Form form;
  form.text("nome", "Nome do grupo").required();
  form.area("observacao", "Observação");
  return form;
}

void show_renaming(Context& context, const Form& form) {
  context.show_form(form, {"Alterar grupo", "equipe", "Salvar alterações", team_trail()});
}

void ask_renaming(Context& context) {
  const Group group = read_group(context);
  Form form = renaming_form();
  form.fill("nome", group.name).fill("observacao", group.note);
  show_renaming(context, form);
}

void rename_group(Context& context) {
  const Group group = read_group(context);
  Form form = renaming_form();
  const bool done =
      form.read(context.request().form) && attempt(form, [&] {
        context.crm().cGrupoUsuarios()->Alterar_Grupo(group.id, context.person(), form.text_of("nome"),
                                                      group.parent, form.text_of("observacao"));
      });
  if (!done) return show_renaming(context, form);
  context.redirect("/equipe", "Grupo alterado.");
}

Form salesperson_form(Context& context) {
  Form form;
  form.text("nome", "Nome completo").required();
  form.choice("grupo", "Grupo", group_options(read_groups(context))).required();
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

void show_salesperson_registration(Context& context, const Form& form) {
  context.show_form(form, {"Novo vendedor", "equipe", "Cadastrar vendedor", team_trail()});
}

void ask_salesperson(Context& context) {
  require_administrator(context);
  Form form = salesperson_form(context);
  if (const auto group = parse_identifier(context.request().query.get("grupo"))) form.fill("grupo", *group);
  show_salesperson_registration(context, form);
}

void take_salesperson(Context& context) {
  require_administrator(context);
  Form form = salesperson_form(context);
  form.read(context.request().form);
  if (form.text_of("senha").size() < shortest_password && !form.text_of("senha").empty()) {
    form.refuse("senha", "A senha precisa de ao menos 8 caracteres.");
  }
  const auto city = find_city(context.crm(), form.text_of("cidade"));
  if (!city && !form.text_of("cidade").empty()) {
    form.refuse("cidade", "Não há cidade cadastrada com esse nome.");
  }
  const bool done = !form.refused() && attempt(form, [&] {
    NewSalesperson person;
    person.name = form.text_of("nome");
    person.login = form.text_of("usuario");
    person.password = form.text_of("senha");
    person.groups = {form.id_of("grupo")};
    person.city = *city;
    person.postal_code = form.text_of("cep");
    person.street = form.text_of("rua");
    person.house = form.text_of("numero");
    person.complement = form.text_of("complemento");
    person.district = form.text_of("bairro");
    const Variant& own_code = context.user().information.get<Variant::Array>().at(own_salesperson_code);
    if (register_salesperson(context.crm(), person, context.person(), to_int32(own_code)) == 0) {
      form.refuse("O cadastro ficou incompleto. Fale com quem administra o sistema.");
    }
  });
  context.site().sessions().team_changed();
  if (!done) return show_salesperson_registration(context, form);
  context.redirect("/equipe", "Vendedor cadastrado.");
}

}  // namespace

void add_team_pages(Router& router) {
  router.get("/equipe", show_team);
  router.get("/equipe/grupos/novo", ask_group);
  router.post("/equipe/grupos/novo", create_group);
  router.get("/equipe/grupos/{}/alterar", ask_renaming);
  router.post("/equipe/grupos/{}/alterar", rename_group);
  router.get("/equipe/vendedores/novo", ask_salesperson);
  router.post("/equipe/vendedores/novo", take_salesperson);
}

}  // namespace pradelis::site
