#pragma once

#include "dataaccess/pooled_connection.h"
#include "dataaccess/quelcor.h"

namespace pradelis::dataaccess {

/// A connection object of the library by itself, without its siblings.
QLCConnPtr new_thread_connection();

/// The connection object behind the library's one, opened when it is closed.
PooledConnection& connection_of(QLCConn& conn);

}  // namespace pradelis::dataaccess
