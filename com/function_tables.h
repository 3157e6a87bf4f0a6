#pragma once

#include "automation/class_table.h"

namespace pradelis::com {

/// The table of functions of a class's objects: that of its dual interface, or of a call by name alone.
const void* function_table(const automation::ClassTable& table);

}  // namespace pradelis::com
