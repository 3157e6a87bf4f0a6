#include "site/choice_lists.h"

#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {

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

const std::vector<Link>& fields_trail() {
  static const std::vector<Link> trail = {{"/equipe", "Equipe"}, {"/campos", "Campos adicionais"}};
  return trail;
}

}  // namespace pradelis::site
