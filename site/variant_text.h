#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/variant.h"

/// Values as texts that give them back exactly: type, bits of numbers and dates, bytes of texts, nested
/// arrays. For values that outlive a process.
namespace pradelis::site {

/// Raises error 13 for an object, which is bound to its thread.
std::string to_kept_text(const Variant& value);

/// The value of a text that `to_kept_text` gave; nothing for any other text.
std::optional<Variant> from_kept_text(std::string_view text);

}  // namespace pradelis::site
