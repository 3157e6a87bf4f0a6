#pragma once

#include <cstdint>

#include "command/json_values.h"

namespace pradelis::command {

/// `ScriptHost::rows` of the component's own recordsets.
Json rows_to_json(const ObjectPtr& recordset, std::int64_t limit);

}  // namespace pradelis::command
