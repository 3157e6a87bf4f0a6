#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "site/context.h"

/// Salespeople as those see them who administer their groups, and what giving records to them takes. Their
/// names are stored as HTML text (component_text.h), since the component writes them into a tree.
namespace pradelis::site {

struct Salesperson {
  std::int32_t id = 0;
  std::string name, login;
  std::int32_t account = 0;
  std::int32_t group = 0, superior = 0;  ///< 0 for none
  std::string group_name, superior_name;
};

/// A salesperson whose group the visitor administers; nothing for any other.
std::optional<Salesperson> find_salesperson(Context& context, std::int32_t person);
/// As above; refuses with 404 any other.
Salesperson read_salesperson(Context& context, std::int32_t person);

std::string salesperson_address(std::int32_t person);
std::vector<Link> salesperson_trail(const Salesperson& person);

/// Salespeople to whom the visitor may hand over what others have: those to whom he may give records, all of
/// them for the maintenance user.
std::vector<Option> receivers(Context& context);

/// The tree that the component writes of those who stand below the visitor.
struct SalespersonTree {
  std::string html;           ///< with radio buttons of the name "vendedor"
  std::vector<Option> apart;  ///< receivers who do not stand in it
};
SalespersonTree read_salesperson_tree(Context& context);

/// Whom to give a record to that `owner` has now; guarded by him.
Form transfer_form(Context& context, std::int32_t owner);

/// What a salesperson owns.
struct Holdings {
  std::vector<std::int32_t> companies, open_deals, ended_deals;
};
Holdings read_holdings(component::CRM& crm, std::int32_t person);

}  // namespace pradelis::site
