#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "site/context.h"
#include "values/date.h"

/// What several areas show of activities. An activity stands on a company, or on one of its deals; whoever
/// sees that sees the activity.
namespace pradelis::site {

struct Activity {
  std::int32_t id = 0;
  std::int32_t company = 0, deal = 0;  ///< `deal` is 0 for none
  std::int32_t kind = 0, performer = 0, contact = 0;
  std::string kind_name, deal_name, contact_name;
  std::optional<Date> date;
  std::string note;
  std::optional<Date> next;  ///< when the next contact is due
  std::int32_t next_kind = 0, next_person = 0;
  std::string next_kind_name, next_person_name;
};

/// An activity that the visitor may see; refuses with 404 any other.
Activity read_activity(Context& context, std::int32_t activity);

std::string activity_address(std::int32_t activity);

/// The newest activities of a company that the visitor may see, for "_activities".
std::vector<View> company_activities(Context& context, std::int32_t company);
/// The newest activities of a deal. The caller has checked that the visitor may see it.
std::vector<View> deal_activities(Context& context, std::int32_t deal);

}  // namespace pradelis::site
