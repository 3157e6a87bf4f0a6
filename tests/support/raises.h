#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "values/error.h"

namespace pradelis::tests {

/// Runs `action`, which has to raise `number` with a description that has `part` in it.
template <class Action>
::testing::AssertionResult raises(std::int32_t number, const std::string& part, Action&& action) {
  try {
    action();
  } catch (const Error& error) {
    if (error.number() == number && error.description().find(part) != std::string::npos) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << "raised " << error.number() << ": " << error.description();
  }
  return ::testing::AssertionFailure() << "raised nothing";
}

template <class Action>
::testing::AssertionResult raises(std::int32_t number, Action&& action) {
  return raises(number, "", action);
}

}  // namespace pradelis::tests
