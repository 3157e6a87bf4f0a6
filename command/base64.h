#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/variant.h"

namespace pradelis::command {

/// Bytes as base64 text, with padding and without line breaks.
std::string to_base64(const Bytes& bytes);

/// The bytes of a base64 text with padding; nothing when it is none.
std::optional<Bytes> from_base64(std::string_view text);

}  // namespace pradelis::command
