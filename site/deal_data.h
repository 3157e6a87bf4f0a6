#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "site/context.h"
#include "site/rows.h"
#include "values/date.h"

/// What several areas show of a deal.
namespace pradelis::site {

enum class DealState { Open, Won, Lost };

/// State by the two columns that it follows from.
DealState deal_state(const Variant& closing_date, const Variant& loss_reason);

struct Deal {
  std::int32_t id = 0;
  std::string name, note;
  std::int32_t company = 0, contact = 0, salesperson = 0, indicator = 0;
  std::string company_name, contact_name, salesperson_name, indicator_name, loss_reason;
  std::optional<Date> expected, closed;
  double expected_value = 0;
  std::optional<double> closing_value;
  std::string registered;  ///< dd/mm/aaaa
  DealState state = DealState::Open;
  std::vector<Option> classes;
};

/// A deal that the visitor may see; refuses with 404 any other.
Deal read_deal(Context& context, std::int32_t deal);

std::string deal_address(std::int32_t deal);
/// The way to a deal's page.
std::vector<Link> deal_trail(const Deal& deal);

/// "Aberto", "Fechado", "Perdido".
const char* state_text(DealState state);
/// For the template part "_state": text and colour of a state.
View state_view(DealState state);

/// Columns of a list of deals, as `deal_entry` reads them, for an alias n of the deals, i of their items.
/// The joins bring company and salesperson.
extern const char* const deal_columns;
extern const char* const deal_sources;
/// One line of a list of deals.
View deal_entry(const Row& row);

/// The salespeople whose deals the visitor may see, for a filter; `chosen` is marked.
std::vector<View> salesperson_views(Context& context, std::int32_t chosen);

}  // namespace pradelis::site
