#pragma once

#include <span>

#include "automation/class_table.h"
#include "com/platform.h"

namespace pradelis::com {

/// Calls the member of a row through its typed function. `places` leads to the value of each argument,
/// in the types that the interface declares, and last to the place for the result where there is one.
/// Gives E_POINTER when a place is missing. Raises what `automation::invoke` raises; the result is
/// empty then.
HRESULT call_slot(Object& object, const automation::Member& member, std::span<void* const> places);

}  // namespace pradelis::com
