#include "site/component_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pradelis::site {
namespace {

constexpr std::pair<char, std::string_view> sequences[] = {
    {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}};

}  // namespace

std::string to_component_text(std::string_view typed) {
  std::string stored;
  for (const char c : typed) {
    const auto* const found = std::find_if(std::begin(sequences), std::end(sequences),
                                           [&](const auto& sequence) { return sequence.first == c; });
    if (found == std::end(sequences)) {
      stored += c;
    } else {
      stored += found->second;
    }
  }
  return stored;
}

std::string from_component_text(std::string_view stored) {
  std::string typed;
  while (!stored.empty()) {
    const auto* const found =
        std::find_if(std::begin(sequences), std::end(sequences),
                     [&](const auto& sequence) { return stored.starts_with(sequence.second); });
    typed += found == std::end(sequences) ? stored.front() : found->first;
    stored.remove_prefix(found == std::end(sequences) ? 1 : found->second.size());
  }
  return typed;
}

}  // namespace pradelis::site
