#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/date.h"

/// What people type into fields.
namespace pradelis::site {

/// A day as typed (31/12/2026) or as date inputs send it (2026-12-31), between 1900 and 2100; nothing for any
/// other text.
std::optional<Date> parse_day(std::string_view text);

}  // namespace pradelis::site
