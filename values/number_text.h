#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "values/error.h"

namespace pradelis {

/// What a text that means a number says, before it becomes a value of some type.
struct NumberText {
  bool negative = false;
  /// Significant digits without leading zeros, empty for zero; the value is digits * 10^exponent.
  std::string digits;
  std::int64_t exponent = 0;
  /// Hexadecimal or octal form: `bits` holds the value, or all ones when it has more than 64 bits; signs and
  /// parentheses around such a form mean nothing.
  bool is_bits = false;
  std::uint64_t bits = 0;
};

/// Reads a whole text as a number; nothing when it is none.
std::optional<NumberText> read_number(std::string_view text);

/// The double nearest to `number`. Raises error 6 when its magnitude is too large.
double to_double(const NumberText& number);

/// Magnitude of a decimal `number`, rounded to the nearest integer, halves to even; nothing when it needs
/// more than 64 bits.
std::optional<std::uint64_t> rounded_magnitude(const NumberText& number);

/// `number` as an integer. A hexadecimal or octal form is the bit pattern of the type, so "&HFFFF" is -1 as a
/// 16-bit integer and 65535 as a 32-bit one. Raises error 6 when it does not fit.
template <class Integer>
Integer to_integer(const NumberText& number) {
  using Unsigned = std::make_unsigned_t<Integer>;
  if (number.is_bits) {
    if (number.bits > std::numeric_limits<Unsigned>::max()) raise(error_number::overflow);
    return static_cast<Integer>(number.bits);
  }
  const std::optional<std::uint64_t> magnitude = rounded_magnitude(number);
  constexpr auto highest = static_cast<std::uint64_t>(std::numeric_limits<Integer>::max());
  const std::uint64_t limit = number.negative ? (std::is_signed_v<Integer> ? highest + 1 : 0) : highest;
  if (!magnitude || *magnitude > limit) raise(error_number::overflow);
  return static_cast<Integer>(number.negative ? 0 - *magnitude : *magnitude);
}

}  // namespace pradelis
