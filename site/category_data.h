#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "site/context.h"

/// The categories of companies: a tree that the maintenance user keeps.
namespace pradelis::site {

struct Category {
  std::int32_t id = 0;
  std::int32_t parent = 0;  ///< the class of companies for the roots
  std::string name;         ///< as typed
  int depth = 0;            ///< 0 for the roots
};

/// All categories, each followed by those below it, by name.
std::vector<Category> read_categories(component::CRM& crm);

/// Those of a company, by name.
std::vector<Option> categories_of(component::CRM& crm, std::int32_t company);

}  // namespace pradelis::site
