#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace pradelis {

/// Two lower-case digits for each byte.
inline std::string to_hexadecimal(std::span<const std::byte> bytes) {
  static constexpr char digits[] = "0123456789abcdef";
  std::string text;
  text.reserve(2 * bytes.size());
  for (const std::byte byte : bytes) {
    const auto value = std::to_integer<std::size_t>(byte);
    text += digits[value >> 4U];
    text += digits[value & 15U];
  }
  return text;
}

}  // namespace pradelis
