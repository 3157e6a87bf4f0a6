#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The border between what visitors send and what goes into statements as it is.
namespace pradelis::site {

/// A positive 32-bit identifier written in plain decimal digits, or nothing.
std::optional<std::int32_t> parse_identifier(std::string_view text);

/// The identifiers of a list such as "12, 15", or nothing when a piece is none. An empty text is an
/// empty list.
std::optional<std::vector<std::int32_t>> parse_identifiers(std::string_view list);

/// "12,15": ready to stand between the parentheses of an IN.
std::string join_identifiers(const std::vector<std::int32_t>& identifiers);

/// Whether a text, put between single quotes as it is, could end the literal or leave its line: it
/// holds a single quote, a backslash or a control character.
bool could_end_literal(std::string_view text);

}  // namespace pradelis::site
