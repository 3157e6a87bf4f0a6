#pragma once

#include <string>
#include <string_view>

#include "dataaccess/dialect.h"

namespace pradelis::dataaccess {

/// A query with the engine's own limit of rows in it, so that the server neither looks for more nor sends
/// them.
struct LimitedQuery {
  std::string text;          ///< with one more "?", for the number of rows
  bool limit_first = false;  ///< whether that is the first "?" of the statement; else it is the last
};

/// `text` is empty where the dialect has no such limit, and for a statement of which it cannot be told that
/// one fits (a change, one with a limit or a lock of its own).
/// \param sql  with "?" for its values
LimitedQuery with_row_limit(std::string_view sql, const Dialect& dialect);

}  // namespace pradelis::dataaccess
