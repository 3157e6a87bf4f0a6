#pragma once

#include <cstdint>
#include <vector>

#include "values/variant.h"

namespace pradelis::test {

/// What a value is converted to.
enum class Target : std::uint8_t { Boolean, UInt8, Int16, Int32, Int64, Double, Date, Text, Formatted };

/// One conversion.
struct Input {
  Variant value;
  Target target = Target::Text;
  int decimals = 0;       ///< for Target::Formatted
  bool grouping = false;  ///< likewise
};

/// 20,000 values (numbers and dates as texts, good and bad; doubles; dates; integers of every type; Booleans,
/// Empty and Null), each with every target that is asked of such a value. The same ones each time.
std::vector<Input> made_inputs();

}  // namespace pradelis::test
