#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "site/context.h"

/// Cities: shared by all, chosen in addresses.
namespace pradelis::site {

struct City {
  std::int32_t id = 0;
  std::string name;
  std::int32_t state = 0;
  std::string state_name;
  std::string code;  ///< the telephone area code
};

/// A city; refuses with 404 what is none.
City read_city(Context& context, std::int32_t city);

/// The way to the list of cities.
const std::vector<Link>& city_trail();

}  // namespace pradelis::site
