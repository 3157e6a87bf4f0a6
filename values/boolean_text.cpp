#include "values/boolean_text.h"

#include "values/text.h"

namespace pradelis {

std::optional<bool> read_boolean(std::string_view text) noexcept {
  const auto is = [text](std::string_view name) { return equal_ignoring_case(text, name); };
  if (is(true_text) || is("True") || text == "#TRUE#") return true;
  if (is(false_text) || is("False") || text == "#FALSE#") return false;
  return std::nullopt;
}

}  // namespace pradelis
