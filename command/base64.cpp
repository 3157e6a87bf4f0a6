#include "command/base64.h"

#include <array>
#include <cstdint>

namespace pradelis::command {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t no_digit = 0xFF;

constexpr std::array<std::uint8_t, 256> make_digits() {
  std::array<std::uint8_t, 256> digits{};
  digits.fill(no_digit);
  for (std::size_t i = 0; i < alphabet.size(); ++i) {
    digits[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
  }
  return digits;
}

constexpr auto digits = make_digits();

/// The bytes of one group of four characters, of which `count` are digits, are appended. The bits
/// that no byte takes must be zero, so that every text has one meaning.
bool append_group(Bytes& bytes, std::string_view group, std::size_t count) {
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    const std::uint8_t digit = i < count ? digits[static_cast<unsigned char>(group[i])] : std::uint8_t{0};
    if (digit == no_digit) return false;
    bits = bits << 6 | digit;
  }
  const std::size_t length = count - 1;
  for (std::size_t i = 0; i < length; ++i)
    bytes.push_back(static_cast<std::byte>(bits >> (16 - 8 * i) & 0xFF));
  return (bits & ((1U << (24 - 8 * length)) - 1)) == 0;
}

}  // namespace

std::string to_base64(const Bytes& bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t bits = 0;
    for (std::size_t j = 0; j < 3; ++j)
      bits = bits << 8 | (j < count ? std::to_integer<std::uint32_t>(bytes[i + j]) : 0);
    for (std::size_t j = 0; j < 4; ++j) text += j <= count ? alphabet[bits >> (18 - 6 * j) & 0x3F] : '=';
  }
  return text;
}

std::optional<Bytes> from_base64(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  Bytes bytes;
  bytes.reserve(text.size() / 4 * 3);
  for (; !text.empty(); text.remove_prefix(4)) {
    std::size_t count = 4;
    if (text.size() == 4 && text[3] == '=') count = text[2] == '=' ? 2 : 3;
    if (!append_group(bytes, text.substr(0, 4), count)) return std::nullopt;
  }
  return bytes;
}

}  // namespace pradelis::command
