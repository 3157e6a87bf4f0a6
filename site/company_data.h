#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "site/context.h"

/// What several areas show of a company.
namespace pradelis::site {

struct Company {
  std::int32_t id = 0;
  std::string name, legal_name, note;
  std::int32_t owner = 0;
  std::string owner_name;
  std::string registered;  ///< dd/mm/aaaa
  std::string street, house, complement, district, city, postal_code;
  bool client = false;
  std::int32_t city_id = 0;
};

/// A company that the visitor may see; refuses with 404 any other.
Company read_company(Context& context, std::int32_t company);

/// One whose owner's records he may see too: clients of other teams are not his to give away or to delete.
Company read_own_company(Context& context, std::int32_t company);

struct Contact {
  std::int32_t id = 0;
  std::string name;
  std::int32_t role = 0;
  std::string role_name;
};

/// A company's contacts, by name. The caller has checked that the visitor may see it.
std::vector<Contact> read_contacts(Context& context, std::int32_t company);

/// The contacts as a choice, with their roles.
std::vector<Option> contact_options(Context& context, std::int32_t company);

std::string company_address(std::int32_t company);
/// The way to a company's page.
std::vector<Link> company_trail(const Company& company);

}  // namespace pradelis::site
