#pragma once

#include <string>

#include "tests/com/conversions/inputs.h"

namespace pradelis::test {

/// What a conversion gave: a number with all its digits, a text in quotes, or "error" and its number.
std::string own_answer(const Input& input);

/// The same by the platform's automation library.
std::string platform_answer(const Input& input);

/// The input, for reports.
std::string text_of(const Input& input);

/// Whether the platform's conversions that have no argument for it go by Brazilian settings.
bool is_brazilian();

}  // namespace pradelis::test
