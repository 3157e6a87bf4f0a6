#pragma once

#include "dataaccess/quelcor.h"

namespace pradelis::dataaccess {

/// A connection object of the library by itself, without its siblings.
QLCConnPtr new_thread_connection();

}  // namespace pradelis::dataaccess
