#include <algorithm>
#include <array>

#include "dataaccess/schema/fixed.h"
#include "site/category_data.h"
#include "site/choice_lists.h"
#include "site/component_text.h"
#include "site/deletion.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

constexpr std::array lists_of_forms = {ReferenceList::Roles, ReferenceList::LossReasons,
                                       ReferenceList::ProductClasses, ReferenceList::ActivityKinds};

/// A category of companies, and those below it. False when the identifier is none.
bool add_category_of_companies(Context& context, Deletion& deletion) {
  const auto categories = read_categories(context.crm());
  std::vector<DeletedObject> below;
  std::vector<std::int32_t> ids;
  int depth = -1;
  for (const Category& category : categories) {
    if (depth >= 0 && category.depth <= depth) break;
    if (depth < 0 && category.id != context.id()) continue;
    if (depth < 0) depth = category.depth;
    ids.push_back(category.id);
    below.push_back({category.id, fixed::class_system, category.name});
    if (category.id != context.id()) deletion.details.push_back("Abaixo dela: " + category.name);
  }
  if (below.empty()) return false;
  std::reverse(below.begin(), below.end());  // leaves first: each category follows its parent in the list
  const auto classified = to_int64(single_value(
      context.crm(), concat("select count(distinct ritem) from classificacao where rcategoria in (",
                            join_identifiers(ids), ")")));
  if (classified != 0) {
    deletion.details.push_back(count_text(classified, "empresa deixa de tê-la", "empresas deixam de tê-la"));
  }
  deletion.add(below);
  deletion.title = "Excluir categoria";
  deletion.trail = {{"/equipe", "Equipe"}, {"/categorias", "Categorias"}};
  return true;
}

/// A choice of an extra field. The component's forms would take one that is gone for none, so that one that
/// is in use stays.
bool add_choice(Context& context, Deletion& deletion, std::int32_t list, const std::string& name) {
  for (const ChoiceList& offered : read_lists(context.crm())) {
    if (offered.id != list) continue;
    const auto uses = to_int64(
        single_value(context.crm(), concat("select count(*) from aditivo where nvalor = ", context.id())));
    if (uses != 0) deletion.refusal = count_text(uses, "registro tem", "registros têm") + " esta opção.";
    deletion.add({{context.id(), fixed::class_system, from_component_text(name)}});
    deletion.title = "Excluir opção";
    deletion.trail = fields_trail();
    return true;
  }
  return false;
}

/// An entry of a list that forms choose from; records that have it keep it.
bool add_entry_of_form(Context& context, Deletion& deletion, std::int32_t list, const std::string& name) {
  for (const ReferenceList known : lists_of_forms) {
    if (static_cast<std::int32_t>(known) != list) continue;
    deletion.add({{context.id(), fixed::class_system, name}});
    deletion.details.emplace_back("Os registros que já o têm continuam com ele.");
    deletion.title = "Excluir da lista";
    deletion.trail = {{"/equipe", "Equipe"}, {"/listas", "Listas"}};
    return true;
  }
  return false;
}

/// Categories of companies, choices and entries of lists are all categories.
Deletion category_deletion(Context& context) {
  context.require_maintenance();
  std::int32_t parent = 0;
  std::string name;
  each_row(context.crm(), concat("select rsuper, nome from categoria_r where oid = ", context.id()), 1,
           [&](const Row& row) {
             parent = row.id(0);
             name = row.text(1);
           });
  Deletion deletion;
  deletion.area = "equipe";
  const bool found =
      context.id() >= fixed::first_free_oid &&
      (add_category_of_companies(context, deletion) || add_choice(context, deletion, parent, name) ||
       add_entry_of_form(context, deletion, parent, name));
  if (!found) throw Refusal{404};
  deletion.after = deletion.trail.back().address;
  return deletion;
}

}  // namespace

void add_category_deletion(Router& router) {
  add_deletion<category_deletion>(router, "/categorias/{}/excluir");
}

}  // namespace pradelis::site
