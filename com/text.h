#pragma once

#include <string>
#include <string_view>

#include "com/platform.h"

namespace pradelis::com {

/// UTF-16 of a UTF-8 text; bytes that are no valid UTF-8 become U+FFFD.
std::wstring to_utf16(std::string_view text);

/// UTF-8 of a UTF-16 text; a half of a surrogate pair alone becomes U+FFFD.
std::string to_utf8(std::wstring_view text);

/// UTF-8 of the platform's string; a null pointer is the empty text.
std::string from_bstr(BSTR text);

/// A new string of the platform, which the receiver frees. Raises error 7 when there is no memory.
BSTR new_bstr(std::string_view text);

}  // namespace pradelis::com
