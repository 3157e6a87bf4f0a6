#include "site/salesperson_data.h"

#include <algorithm>

#include "dataaccess/schema/fixed.h"
#include "site/component_html.h"
#include "site/identifiers.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

constexpr std::int16_t root_indent = 0;

/// The values of the radio buttons in the component's HTML.
std::vector<std::int32_t> offered_by(std::string_view html) {
  constexpr std::string_view button = "<input type=\"radio\"";
  constexpr std::string_view value = "value=\"";
  std::vector<std::int32_t> offered;
  for (std::size_t at = html.find(button); at != std::string_view::npos; at = html.find(button, at)) {
    at = html.find(value, at) + value.size();
    offered.push_back(parse_identifier(html.substr(at, html.find('"', at) - at)).value_or(0));
  }
  return offered;
}

std::vector<std::int32_t> read_ids(component::CRM& crm, const std::string& sql) {
  std::vector<std::int32_t> ids;
  each_row(crm, sql, 0, [&](const Row& row) { ids.push_back(row.id(0)); });
  return ids;
}

}  // namespace

std::optional<Salesperson> find_salesperson(Context& context, std::int32_t id) {
  Salesperson person;
  each_row(context.crm(),
           concat("select v.nome, i.rescopo, s.nome, u.oid, u.nome, a.rgrupo, g.nome from vendedor_r v"
                  " join item i on i.oid = v.oid left join item s on s.oid = i.rescopo"
                  " left join comunicacao c on c.ritem = v.oid and c.rtipo = ",
                  fixed::relation_user_account,
                  " left join usuario_r u on u.oid = c.rendereco left join agrupamento a on a.oid ="
                  " (select min(oid) from agrupamento where ritem = v.oid and rpapel = ",
                  fixed::role_group_member, ") left join item_r g on g.oid = a.rgrupo where v.oid = ", id),
           1, [&](const Row& row) {
             person.id = id;
             person.name = row.component_text(0);
             person.superior = row.id(1) == fixed::system_object ? 0 : row.id(1);
             if (person.superior != 0) person.superior_name = row.component_text(2);
             person.account = row.id(3);
             person.login = row.text(4);
             person.group = row.text(6).empty() ? 0 : row.id(5);
             person.group_name = row.text(6);
           });
  const bool administered = context.user().maintenance || context.visible().administers(person.group);
  return person.id != 0 && administered ? std::optional(person) : std::nullopt;
}

Salesperson read_salesperson(Context& context, std::int32_t id) {
  auto person = find_salesperson(context, id);
  if (!person) throw Refusal{404};
  return std::move(*person);
}

std::string salesperson_address(std::int32_t person) {
  return "/equipe/vendedores/" + std::to_string(person);
}

std::vector<Link> salesperson_trail(const Salesperson& person) {
  return {{"/equipe", "Equipe"},
          {"/equipe/vendedores", "Vendedores"},
          {salesperson_address(person.id), person.name}};
}

std::vector<Option> receivers(Context& context) {
  if (!context.user().maintenance) return context.visible().salespeople();
  std::vector<Option> people;
  each_row(context.crm(), "select oid, nome from vendedor_r order by nome, oid", 0, [&](const Row& row) {
    people.push_back({row.id(0), row.component_text(1)});
  });
  return people;
}

SalespersonTree read_salesperson_tree(Context& context) {
  take_component_html();
  const std::string name = context.user().maintenance ? "Manutenção" : to_component_text(context.user().name);
  context.crm().cVendedor()->Montar_Arv_Vendedor("vendedor", context.person(), name, root_indent);
  SalespersonTree tree{take_component_html(), {}};
  const auto offered = offered_by(tree.html);
  for (const Option& person : receivers(context)) {
    if (std::find(offered.begin(), offered.end(), person.id) == offered.end()) tree.apart.push_back(person);
  }
  return tree;
}

Form transfer_form(Context& context, std::int32_t owner) {
  Form form;
  form.choice("vendedor", "Novo vendedor", context.visible().salespeople()).required();
  return form.guard(std::to_string(owner));
}

Holdings read_holdings(component::CRM& crm, std::int32_t person) {
  const auto deals = [&](const char* ended) {
    return read_ids(crm, concat("select n.oid from crm_pos_negocio n join item_r i on i.oid = n.oid"
                                " where n.rvendedor = ",
                                person, " and n.fechamento is ", ended));
  };
  return {read_ids(crm, concat("select oid from pessoajuridica_r where criadopor = ", person)), deals("null"),
          deals("not null")};
}

}  // namespace pradelis::site
