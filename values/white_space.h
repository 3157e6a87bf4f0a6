#pragma once

#include <cstddef>
#include <string_view>

namespace pradelis {

/// Bytes of the white space character that `text` starts with, or 0 when it starts with none: blank, tab and
/// line breaks, no-break space and the other spaces of Unicode, as texts pasted from elsewhere hold them.
std::size_t leading_space_length(std::string_view text) noexcept;

/// Removes all white space that `text` starts with, and tells whether there was any.
bool skip_spaces(std::string_view& text) noexcept;

}  // namespace pradelis
