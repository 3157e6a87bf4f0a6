#pragma once

#include <cstdint>

#include "command/json_values.h"

namespace pradelis::command {

inline constexpr std::int64_t all_rows = -1;

/// At most `limit` rows of a recordset from its current row on, which it is moved behind, with the names
/// and types of its columns. Raises error 13 for an object that is no recordset, and what reading
/// raises.
Json rows_to_json(const ObjectPtr& recordset, std::int64_t limit);

}  // namespace pradelis::command
