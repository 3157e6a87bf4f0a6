#pragma once

#include <string_view>
#include <vector>

#include "values/object.h"

namespace pradelis::component {

/// The program identifiers of the creatable classes: "Pradelis.CRM" and its three companions.
const std::vector<std::string_view>& program_identifiers();

/// A new object of the class of this program identifier, whatever its case. Raises error 429 for an
/// unknown one, and whatever the creation of the object raises.
ObjectPtr create_object(std::string_view program_identifier);

}  // namespace pradelis::component
