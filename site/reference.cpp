#include "site/reference.h"

#include "component/crm.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {

std::vector<Option> entries(component::CRM& crm, ReferenceList list) {
  std::vector<Option> found;
  each_row(crm,
           concat("select oid, nome from categoria_r where rsuper = ", static_cast<std::int32_t>(list),
                  " order by nome"),
           0, [&](const Row& row) {
             found.push_back({row.id(0), row.text(1)});
           });
  return found;
}

std::int32_t add_category(component::CRM& crm, std::int32_t parent, const std::string& name,
                          std::int32_t creator) {
  const std::int32_t oid =
      crm.QLCBase()->IncluirItem(creator, name, dataaccess::fixed::class_system, 7, parent,
                                 Variant::missing(), Variant::missing(), creator, "", "", 0);
  append_row(crm, "categoria", [&](dataaccess::Recordset& row) {
    row.set("oid", oid);
    row.set("rsuper", parent);
  });
  return oid;
}

void rename_item(component::CRM& crm, std::int32_t item, const std::string& name, std::int32_t changer) {
  const Variant same = Variant::missing();
  crm.QLCBase()->AlterarItem(item, changer, name, same, same, same, same);
}

std::int32_t add_entry(component::CRM& crm, ReferenceList list, const std::string& name,
                       std::int32_t creator) {
  return add_category(crm, static_cast<std::int32_t>(list), name, creator);
}

void refuse_if_listed(Form& form, const std::vector<Option>& entries) {
  const std::string name = to_upper(form.text_of("nome"));
  for (const Option& entry : entries) {
    if (to_upper(entry.label) == name) form.refuse("nome", "Já está na lista.");
  }
}

std::optional<std::int32_t> find_city(component::CRM& crm, const std::string& name) {
  std::optional<std::int32_t> city;
  each_row(crm,
           concat("select c.oid from cidade c, item_r i where i.oid = c.oid and UPPER(i.nome) = UPPER('",
                  crm.PrepararVariavel(name), "')"),
           1, [&](const Row& row) { city = row.id(0); });
  return city;
}

std::string like_anywhere(component::CRM& crm, const std::string& text) {
  std::string pattern = replace_all(text, "!", "!!");
  pattern = replace_all(replace_all(pattern, "%", "!%"), "_", "!_");
  return "%" + crm.PrepararVariavel(pattern) + "%";
}

}  // namespace pradelis::site
