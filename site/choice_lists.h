#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "site/context.h"

/// The lists that extra fields take their choices from. A list is a category, and its choices are the
/// categories below it.
namespace pradelis::site {

struct ChoiceList {
  std::int32_t id = 0;
  std::string name;  ///< empty for one that another program made
};

/// The lists, by name.
std::vector<ChoiceList> read_lists(component::CRM& crm);
/// What a list is called: its name, or its number.
std::string list_name(const ChoiceList& list);
/// Its choices, by name.
std::vector<Option> read_choices(component::CRM& crm, std::int32_t list);

/// Makes a list without choices; gives its identifier.
std::int32_t add_choice_list(component::CRM& crm, const std::string& name, std::int32_t creator);

/// The way to the page of extra fields and lists.
const std::vector<Link>& fields_trail();

}  // namespace pradelis::site
