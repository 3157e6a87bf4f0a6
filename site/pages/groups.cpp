#include <algorithm>

#include "component/crm.h"
#include "dataaccess/schema/fixed.h"
#include "site/group_data.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/rows.h"
#include "site/salesperson_data.h"
#include "site/site.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

constexpr std::int32_t root_scope = 7;

bool is_among(const std::vector<std::int32_t>& ids, std::int32_t id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

std::vector<std::int32_t> ids_of(const std::vector<Group>& groups) {
  std::vector<std::int32_t> ids;
  for (const Group& group : groups) ids.push_back(group.id);
  return ids;
}

/// The tree as the page shows it.
class Tree {
 public:
  Tree(const std::vector<Group>& groups, const std::vector<Member>& members)
      : groups_(groups), ids_(ids_of(groups)), members_(members) {}

  std::vector<View> top() const {
    std::vector<View> views;
    for (const Group& group : groups_) {
      if (!is_among(ids_, group.parent)) views.push_back(node(group, 0));
    }
    return views;
  }

 private:
  /// `depth` bounds the walk: another program may have given a group one of its own descendants as parent.
  View node(const Group& group, int depth) const {
    std::vector<View> people;
    for (const Member& member : members_) {
      if (member.group != group.id) continue;
      people.push_back(
          View().set("person", member.person.label).set("page", salesperson_address(member.person.id)));
    }
    std::vector<View> children;
    for (const Group& child : groups_) {
      if (child.parent == group.id && depth < deepest) children.push_back(node(child, depth + 1));
    }
    View view;
    view.set("name", group.name).set("id", std::to_string(group.id));
    view.flag("peopled", !people.empty()).list("people", std::move(people));
    return view.flag("parent", !children.empty()).list("groups", std::move(children));
  }

  static constexpr int deepest = 40;
  const std::vector<Group>& groups_;
  std::vector<std::int32_t> ids_;
  const std::vector<Member>& members_;
};

void show_team(Context& context) {
  context.require_administrator();
  const auto groups = read_groups(context);
  const auto members = read_members(context, ids_of(groups));
  View view;
  view.flag("none", groups.empty()).flag("maintenance", context.user().maintenance);
  view.list("groups", Tree(groups, members).top());
  context.show("team", "Equipe", "equipe", std::move(view));
}

const std::vector<Link>& team_trail() {
  static const std::vector<Link> trail = {{"/equipe", "Equipe"}};
  return trail;
}

Form group_form(Context& context, std::vector<Option> parents) {
  Form form;
  form.text("nome", "Nome do grupo").required();
  auto& parent = form.choice("pai", "Abaixo de", std::move(parents));
  if (context.user().maintenance) {
    parent.hint("Sem escolha, o grupo fica no topo.");
  } else {
    parent.required();
  }
  form.area("observacao", "Observação");
  return form;
}

std::int32_t chosen_parent(const Form& form) {
  const std::int32_t parent = form.id_of("pai");
  return parent == 0 ? root_scope : parent;
}

void show_registration(Context& context, const Form& form) {
  context.show_form(form, {"Novo grupo", "equipe", "Criar grupo", team_trail()});
}

Form registration_form(Context& context) {
  context.require_administrator();
  return group_form(context, group_options(read_groups(context)));
}

void ask_group(Context& context) {
  Form form = registration_form(context);
  if (const auto parent = parse_identifier(context.request().query.get("pai"))) form.fill("pai", *parent);
  show_registration(context, form);
}

void create_group(Context& context) {
  Form form = registration_form(context);
  const bool done =
      form.read(context.request().form) && attempt(form, [&] {
        context.crm().cGrupoUsuarios()->Cadastrar_Grupo(context.person(), form.text_of("nome"),
                                                        chosen_parent(form), form.text_of("observacao"));
      });
  if (!done) return show_registration(context, form);
  context.site().sessions().team_changed();
  context.redirect("/equipe", "Grupo criado.");
}

void show_change(Context& context, const Form& form) {
  context.show_form(form, {"Alterar grupo", "equipe", "Salvar alterações", team_trail()});
}

/// The form of a group as it is stored. It may be moved below any group that is not below itself.
Form change_form(Context& context, const Group& group) {
  const auto below = below_group(context, group.id);
  std::vector<Option> parents;
  for (const Option& option : group_options(read_groups(context))) {
    if (option.id != group.id && !is_among(below, option.id)) parents.push_back(option);
  }
  const std::int32_t parent = group.parent == root_scope ? 0 : group.parent;
  keep_option(parents, parent,
              plain_text(single_value(context.crm(), concat("select nome from item where oid = ", parent))));
  Form form = group_form(context, std::move(parents));
  form.fill("nome", group.name).fill("pai", parent).fill("observacao", group.note);
  return form.guard();
}

void ask_change(Context& context) {
  show_change(context, change_form(context, read_group(context, context.id())));
}

void change_group(Context& context) {
  const Group group = read_group(context, context.id());
  Form form = change_form(context, group);
  const auto present = [&] { return change_form(context, read_group(context, group.id)); };
  const bool done =
      form.read(context.request().form) && change_record(context.crm(), groups_row, form, present, [&] {
        const std::int32_t parent = chosen_parent(form);
        // Somebody may have moved the chosen group below this one since the form was read.
        if (is_among(below_group(context, group.id), parent)) {
          return form.refuse("pai", "O grupo ficaria abaixo de si mesmo.");
        }
        context.crm().cGrupoUsuarios()->Alterar_Grupo(group.id, context.person(), form.text_of("nome"),
                                                      parent, form.text_of("observacao"));
      });
  if (!done) return show_change(context, form);
  context.site().sessions().team_changed();
  context.redirect("/equipe", "Grupo alterado.");
}

/// What goes with a group: the objects below it, and the people who have to go somewhere else.
struct Deletion {
  Group group;
  std::vector<std::int32_t> groups;  ///< it, and those below
  std::vector<Member> members;
  std::vector<std::string> lines;
  Form form;
};

Deletion read_deletion(Context& context) {
  Deletion deletion;
  deletion.group = read_group(context, context.id());
  auto below = below_group(context, deletion.group.id);
  std::string state = join_identifiers(below);
  if (!below.empty()) {
    each_row(context.crm(),
             concat("select nome from item_r where oid in (", join_identifiers(below), ") order by nome"), 0,
             [&](const Row& row) { deletion.lines.push_back("Abaixo dele: " + row.text(0)); });
  }
  below.push_back(deletion.group.id);
  deletion.groups = below;
  deletion.members = read_members(context, below);
  for (const Member& member : deletion.members) {
    deletion.lines.push_back("Vendedor: " + member.person.label);
    state += concat(";", member.person.id);
  }
  if (!deletion.members.empty()) {
    std::vector<Option> groups;
    for (const Option& option : group_options(read_groups(context))) {
      if (!is_among(below, option.id)) groups.push_back(option);
    }
    deletion.form.choice("destino", "Os vendedores passam para o grupo", std::move(groups)).required();
  }
  deletion.form.guard(state);
  return deletion;
}

void show_deletion(Context& context, const Form& form, const Deletion& deletion) {
  FormPage page{"Excluir grupo", "equipe", "Excluir grupo", team_trail(), "“" + deletion.group.name + "”"};
  page.danger = true;
  page.lead +=
      deletion.lines.empty() ? ": nada fica abaixo dele, e ninguém está nele." : " e o que fica abaixo dele:";
  page.details = deletion.lines;
  context.show_form(form, page);
}

void ask_deletion(Context& context) {
  const Deletion deletion = read_deletion(context);
  show_deletion(context, deletion.form, deletion);
}

/// Only memberships of these groups: people may be in others too. Deleted people are moved as well, for the
/// deals that they have closed are seen by way of their group.
void move_members(component::CRM& crm, const std::vector<std::int32_t>& groups, std::int32_t to) {
  crm.QLCConn()->Conexao()->Execute(concat("update agrupamento set rgrupo = ", to,
                                           " where rpapel = ", fixed::role_group_member, " and rgrupo in (",
                                           join_identifiers(groups), ")"));
}

void delete_group(Context& context) {
  const Deletion deletion = read_deletion(context);
  Form form = deletion.form;
  component::CRM& crm = context.crm();
  const auto present = [&] { return read_deletion(context).form; };
  const bool done = form.read(context.request().form) && change_record(crm, groups_row, form, present, [&] {
                      const std::int32_t to =
                          deletion.members.empty() ? deletion.group.parent : form.id_of("destino");
                      if (to != root_scope) move_members(crm, deletion.groups, to);
                      crm.cGrupoUsuarios()->Excluir_Grupo(deletion.group.id, context.person());
                    });
  if (!done) return show_deletion(context, form, read_deletion(context));
  context.site().sessions().team_changed();
  context.redirect("/equipe", "Grupo excluído.");
}

}  // namespace

void add_group_pages(Router& router) {
  router.get("/equipe", show_team);
  router.get("/equipe/grupos/novo", ask_group);
  router.post("/equipe/grupos/novo", create_group);
  router.get("/equipe/grupos/{}/alterar", ask_change);
  router.post("/equipe/grupos/{}/alterar", change_group);
  router.get("/equipe/grupos/{}/excluir", ask_deletion);
  router.post("/equipe/grupos/{}/excluir", delete_group);
}

}  // namespace pradelis::site
