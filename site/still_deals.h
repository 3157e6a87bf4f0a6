#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "site/context.h"

/// Open deals that nothing has happened on for long.
namespace pradelis::site {

/// After this many days without an activity an open deal counts as standing still.
inline constexpr std::int32_t still_days = 30;

/// Expression of when a deal was last worked on: its last activity, or its registration.
/// \param deal, registered  columns of its identifier and of the day it was registered on
std::string last_move(const char* deal, const char* registered);

/// Whether a deal whose last move is this stands still today.
bool stands_still(const Variant& last_move);

/// Turns the switch "still" on in the views of the deals that stand still, and off in the others.
void mark_still(Context& context, std::vector<std::pair<std::int32_t, View>>& deals);

}  // namespace pradelis::site
