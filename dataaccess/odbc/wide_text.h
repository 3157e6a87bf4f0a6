#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/odbc/odbc_api.h"

namespace pradelis::dataaccess::odbc {

/// A text in UTF-16, as the wide interface takes and gives it; its length is its number of units, no
/// terminator is part of it.
using WideText = std::vector<SQLWCHAR>;

/// Writes `utf8` over `wide`. False when it is no valid UTF-8; `wide` then holds nothing of use.
bool to_wide(std::string_view utf8, WideText& wide);

/// `utf8` in UTF-16; bytes that are no valid UTF-8 become U+FFFD.
WideText wide_text(std::string_view utf8);

/// Appends `length` units to `utf8`; a surrogate without its partner becomes U+FFFD.
void append_utf8(std::string& utf8, const SQLWCHAR* units, std::size_t length);

std::string utf8_text(const SQLWCHAR* units, std::size_t length);

/// The length in units for the interface's calls. Raises error 7 when a text is too long for them.
SQLINTEGER unit_count(const WideText& text);

}  // namespace pradelis::dataaccess::odbc
