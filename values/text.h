#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "values/convert.h"
#include "values/variant.h"

namespace pradelis {

/// Upper case of a UTF-8 text, letter by letter: accented Latin, Greek and Cyrillic letters too.
/// Letters whose capital and small form are not each other's only counterpart stay as they are ("ß", "ı",
/// the final "ς"). Bytes that are no valid UTF-8 are kept. The result is as long as `text`.
std::string to_upper(std::string_view text);
std::string to_lower(std::string_view text);

/// Without the blanks (U+0020 only) at both ends, or at one of them.
std::string_view trim(std::string_view text) noexcept;
std::string_view trim_left(std::string_view text) noexcept;
std::string_view trim_right(std::string_view text) noexcept;

/// The pieces between the separators, in order; empty pieces are kept; an empty text has no pieces.
/// The pieces point into `text`.
std::vector<std::string_view> split(std::string_view text, char separator);

/// `text` with every `from` (not empty) replaced by `to`.
std::string replace_all(std::string_view text, std::string_view from, std::string_view to);

/// Equality in which ASCII letters of either case are the same: for names of fields and members.
bool equal_ignoring_case(std::string_view left, std::string_view right) noexcept;

/// Whether the bytes are well-formed UTF-8 (no surrogates, nothing above U+10FFFF, no overlong form).
bool is_valid_utf8(std::string_view text) noexcept;

/// Joins parts into one text, as statements and HTML are built: texts as they are, numbers as their
/// decimal text, variants as `append_text` does (Null adds nothing; Missing raises error 13).
template <class... Parts>
std::string concat(const Parts&... parts);

namespace detail {
void append_integer(std::string& text, std::int64_t value);

template <class Part>
void append_part(std::string& text, const Part& part) {
  if constexpr (std::is_convertible_v<const Part&, std::string_view>) {
    text += std::string_view(part);
  } else if constexpr (std::is_integral_v<Part>) {
    static_assert(!std::is_same_v<Part, bool>, "a Boolean has no place in a statement");
    append_integer(text, part);
  } else {
    append_text(text, part);
  }
}
}  // namespace detail

template <class... Parts>
std::string concat(const Parts&... parts) {
  std::string text;
  text.reserve(128);
  (detail::append_part(text, parts), ...);
  return text;
}

}  // namespace pradelis
