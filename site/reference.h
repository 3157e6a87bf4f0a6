#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "dataaccess/schema/fixed.h"
#include "site/form.h"

namespace pradelis::component {
class CRM;
}

/// The lists that forms choose from. Each is the set of categories below a fixed one.
namespace pradelis::site {

enum class ReferenceList : std::int32_t {
  Roles = dataaccess::fixed::list_contact_roles,  ///< positions of contacts in their companies
  LossReasons = dataaccess::fixed::list_loss_reasons,
  ProductClasses = dataaccess::fixed::list_product_classes,
  States = dataaccess::fixed::list_states,  ///< of the country, for cities
  ActivityKinds = dataaccess::fixed::list_activity_kinds,
};

/// The entries of a list, by name.
std::vector<Option> entries(component::CRM& crm, ReferenceList list);

/// Adds a category below another; gives its identifier.
std::int32_t add_category(component::CRM& crm, std::int32_t parent, const std::string& name,
                          std::int32_t creator);

/// Gives an object another name, and keeps the rest of it.
void rename_item(component::CRM& crm, std::int32_t item, const std::string& name, std::int32_t changer);

/// Adds an entry; gives its identifier.
std::int32_t add_entry(component::CRM& crm, ReferenceList list, const std::string& name,
                       std::int32_t creator);

/// Refuses the name that a form holds in "nome" when it stands among `entries`, whatever its case.
void refuse_if_listed(Form& form, const std::vector<Option>& entries);

/// The city of this name, whatever its case.
std::optional<std::int32_t> find_city(component::CRM& crm, const std::string& name);

/// `pattern` of a LIKE … ESCAPE '!' that finds `text` anywhere in a value, between its quotes.
std::string like_anywhere(component::CRM& crm, const std::string& text);

}  // namespace pradelis::site
