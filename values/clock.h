#pragma once

#include <functional>

#include "values/date.h"

namespace pradelis {

/// The server's local date and time, to the second: the only clock that business code reads.
Date now();

/// The server's local date, without time of day.
Date today();

/// Replaces the clock of the whole process by `clock`, or restores the real one when `clock` is empty.
/// For tests; not to be called while another thread reads the clock.
void replace_clock(std::function<Date()> clock);

}  // namespace pradelis
