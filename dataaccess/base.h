#pragma once

#include "dataaccess/quelcor.h"

namespace pradelis::dataaccess {

/// The operations on the object model, working on `conn`.
QLCBasePtr new_base(QLCConnPtr conn);

/// The formatting of data for display.
QLCDataPtr new_data();

}  // namespace pradelis::dataaccess
