#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pradelis::component {
class CRM;
}

namespace pradelis::site {

/// What the site keeps as a salesperson's own password (`vendedocad.senhaven`): an encoding of login
/// and password, so that people type one password and none is stored in plain.
std::string salesperson_password(component::CRM& crm, const std::string& login, const std::string& password);

struct NewSalesperson {
  std::string name;   ///< as typed
  std::string login;  ///< goes into a statement as it is: the caller has checked it
  std::string password;
  std::vector<std::int32_t> groups;
  std::int32_t city = 0;
  std::string street, house, complement, district, postal_code;
};

/// Registers a person with a login, and enters him in the register of salespeople.
/// \param registrar  who registers him
/// \param manager    code of his manager in the register of salespeople
/// Result: his identifier; 0 when a membership or relation was not recorded. Raises what the component
/// raises, 1001 for a login that is taken.
std::int32_t register_salesperson(component::CRM& crm, const NewSalesperson& person, std::int32_t registrar,
                                  std::int32_t manager);

}  // namespace pradelis::site
