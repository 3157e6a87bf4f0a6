#pragma once

#include <string>
#include <vector>

#include "tests/com/conversions/inputs.h"

namespace pradelis::test {

/// A conversion whose two answers differ.
struct Difference {
  const Input& input;
  const std::string& own;
  const std::string& platform;
};

/// A known difference.
struct Exception {
  const char* name;
  const char* reason;
  bool (*covers)(const Difference& difference);
};

const std::vector<Exception>& exceptions();

/// The first exception that covers the difference; null when none does.
const Exception* find_exception(const Difference& difference);

}  // namespace pradelis::test
