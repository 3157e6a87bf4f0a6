#include "site/identifiers.h"

#include <algorithm>
#include <charconv>

#include "values/text.h"

namespace pradelis::site {

std::optional<std::int32_t> parse_identifier(std::string_view text) {
  std::int32_t identifier = 0;
  if (text.empty() || text.front() < '0' || text.front() > '9') return std::nullopt;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), identifier);
  if (failure != std::errc() || end != text.data() + text.size() || identifier <= 0) return std::nullopt;
  return identifier;
}

std::optional<std::vector<std::int32_t>> parse_identifiers(std::string_view list) {
  std::vector<std::int32_t> identifiers;
  for (const std::string_view piece : split(list, ',')) {
    const auto identifier = parse_identifier(trim(piece));
    if (!identifier) return std::nullopt;
    identifiers.push_back(*identifier);
  }
  return identifiers;
}

std::string join_identifiers(const std::vector<std::int32_t>& identifiers) {
  std::string list;
  for (const std::int32_t identifier : identifiers) {
    if (!list.empty()) list += ',';
    list += std::to_string(identifier);
  }
  return list;
}

bool could_end_literal(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    return c == '\'' || c == '\\' || static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
  });
}

}  // namespace pradelis::site
