#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "values/error.h"

/// Counters of 16 bits, which fail instead of wrapping.
namespace pradelis::component {

/// `value` + `more`; raises error 6 beyond 32,767.
inline std::int16_t add_int16(std::int16_t value, std::int16_t more) {
  const std::int32_t sum = std::int32_t{value} + more;
  if (sum > std::numeric_limits<std::int16_t>::max()) raise(error_number::overflow);
  return static_cast<std::int16_t>(sum);
}

/// Makes sure that a loop over `count` elements can be counted from 0 in 16 bits; raises error 6.
inline void require_int16_count(std::size_t count) {
  if (count > std::size_t{std::numeric_limits<std::int16_t>::max()} + 1) raise(error_number::overflow);
}

}  // namespace pradelis::component
