#include "values/white_space.h"

#include <algorithm>
#include <array>

namespace pradelis {
namespace {

constexpr std::array<std::string_view, 19> wide_spaces = {
    "\u0085", "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006",
    "\u2007", "\u2008", "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

}  // namespace

std::size_t leading_space_length(std::string_view text) noexcept {
  if (text.empty()) return 0;
  const char first = text.front();
  if (first == ' ' || (first >= '\t' && first <= '\r')) return 1;
  if (static_cast<unsigned char>(first) < 0x80) return 0;
  const auto found = std::find_if(wide_spaces.begin(), wide_spaces.end(),
                                  [text](std::string_view space) { return text.starts_with(space); });
  return found == wide_spaces.end() ? 0 : found->size();
}

bool skip_spaces(std::string_view& text) noexcept {
  const std::size_t before = text.size();
  while (const std::size_t length = leading_space_length(text)) text.remove_prefix(length);
  return text.size() != before;
}

}  // namespace pradelis
