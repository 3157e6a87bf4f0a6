#pragma once

#include <string>
#include <string_view>

#include "dataaccess/dialect.h"

namespace pradelis::dataaccess {

/// A query with the engine's own limit of rows added, as a parameter marker that comes after all others, so
/// that the server neither looks for the rows nor sends them. An empty text where the dialect has no such
/// limit, and for a statement of which it cannot be told that one fits (a change, one with a limit or a
/// lock of its own).
/// \param sql  with "?" for its values
std::string with_row_limit(std::string_view sql, const Dialect& dialect);

}  // namespace pradelis::dataaccess
