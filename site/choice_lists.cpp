#include "site/choice_lists.h"

#include "dataaccess/schema/fixed.h"
#include "site/reference.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

/// The statement of a list's choices. The first one is none: the component's lists have no empty choice of
/// their own, and the first would seem chosen.
std::string choices_statement(std::int32_t list) {
  return concat("select oid, nome from (select 0 oid, '' nome from item where oid = ", fixed::system_object,
                " union all select oid, nome from categoria_r where rsuper = ", list,
                ") escolhas order by nome");
}

}  // namespace

std::vector<ChoiceList> read_lists(component::CRM& crm) {
  std::vector<ChoiceList> lists;
  each_row(
      crm,
      "select l.oid, i.nome from listadeobjetos l left join item_r i on i.oid = l.oid order by i.nome, l.oid",
      0, [&](const Row& row) {
        lists.push_back({row.id(0), row.text(1)});
      });
  return lists;
}

std::string list_name(const ChoiceList& list) {
  return list.name.empty() ? "Lista " + std::to_string(list.id) : list.name;
}

std::vector<Option> read_choices(component::CRM& crm, std::int32_t list) {
  std::vector<Option> found;
  each_row(crm, concat("select oid, nome from categoria_r where rsuper = ", list, " order by nome"), 0,
           [&](const Row& row) {
             found.push_back({row.id(0), row.component_text(1)});
           });
  return found;
}

std::int32_t add_choice_list(component::CRM& crm, const std::string& name, std::int32_t creator) {
  const std::int32_t list = add_category(crm, fixed::system_object, name, creator);
  append_row(crm, "listadeobjetos", [&](dataaccess::Recordset& row) {
    row.set("oid", list);
    row.set("especificacao", choices_statement(list));
  });
  return list;
}

const std::vector<Link>& fields_trail() {
  static const std::vector<Link> trail = {{"/equipe", "Equipe"}, {"/campos", "Campos adicionais"}};
  return trail;
}

}  // namespace pradelis::site
