#include "site/category_data.h"

#include <algorithm>
#include <map>

#include "dataaccess/schema/fixed.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

/// No tree is deeper; a category that is below itself ends here.
constexpr int deepest = 40;

using Children = std::multimap<std::int32_t, Category>;

void add_below(const Children& children, std::int32_t parent, int depth, std::vector<Category>& categories) {
  if (depth > deepest) return;
  const auto [first, last] = children.equal_range(parent);
  for (auto child = first; child != last; ++child) {
    // The fixed ones, client and prospect, are no categories that one chooses.
    if (depth == 0 && child->second.id < fixed::first_free_oid) continue;
    categories.push_back(child->second);
    categories.back().depth = depth;
    add_below(children, child->second.id, depth + 1, categories);
  }
}

}  // namespace

std::vector<Category> read_categories(component::CRM& crm) {
  Children children;
  each_row(crm, "select oid, rsuper, nome from categoria_r order by nome, oid", 0, [&](const Row& row) {
    children.emplace(row.id(1), Category{row.id(0), row.id(1), row.component_text(2), 0});
  });
  std::vector<Category> categories;
  add_below(children, fixed::class_company, 0, categories);
  return categories;
}

std::vector<Option> categories_of(component::CRM& crm, std::int32_t company) {
  std::vector<Option> found;
  each_row(
      crm,
      concat("select distinct c.oid, c.nome from classificacao k join categoria_r c on c.oid = k.rcategoria"
             " where k.ritem = ",
             company, " and c.oid >= ", fixed::first_free_oid, " order by c.nome, c.oid"),
      0, [&](const Row& row) {
        found.push_back({row.id(0), row.component_text(1)});
      });
  return found;
}

}  // namespace pradelis::site
