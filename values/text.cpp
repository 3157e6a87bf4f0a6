#include "values/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace pradelis {
namespace {

constexpr char ascii_lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

/// "00", "01" ... "99".
constexpr std::array<char, 200> digit_pairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

constexpr bool is_continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// Length of the well-formed sequence at the start of `text` (not empty), or 0 when there is none. The
/// limits of the second byte keep out overlong forms, surrogates and what lies above U+10FFFF.
std::size_t sequence_length(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text[0]);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() < length) return 0;
  const auto second = static_cast<unsigned char>(text[1]);
  const unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  if (second < lowest || second > highest) return 0;
  return std::all_of(text.begin() + 2, text.begin() + static_cast<std::ptrdiff_t>(length), is_continuation)
             ? length
             : 0;
}

}  // namespace

std::string_view trim_left(std::string_view text) noexcept {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text;
}

std::string_view trim_right(std::string_view text) noexcept {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view trim(std::string_view text) noexcept { return trim_left(trim_right(text)); }

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  if (text.empty()) return pieces;
  std::size_t start = 0;
  for (std::size_t end = text.find(separator); end != std::string_view::npos;
       end = text.find(separator, start)) {
    pieces.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  pieces.push_back(text.substr(start));
  return pieces;
}

std::string replace_all(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  result.reserve(text.size());
  std::size_t start = 0;
  for (std::size_t found = text.find(from); found != std::string_view::npos; found = text.find(from, start)) {
    result.append(text, start, found - start).append(to);
    start = found + from.size();
  }
  return result.append(text, start);
}

bool equal_ignoring_case(std::string_view left, std::string_view right) noexcept {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return ascii_lower(a) == ascii_lower(b); });
}

bool is_valid_utf8(std::string_view text) noexcept {
  while (!text.empty()) {
    // Eight ASCII letters at a time: most texts have nothing else.
    std::uint64_t eight = 0;
    while (text.size() >= sizeof eight) {
      std::memcpy(&eight, text.data(), sizeof eight);
      if ((eight & 0x8080808080808080U) != 0) break;
      text.remove_prefix(sizeof eight);
    }
    if (text.empty()) return true;
    const std::size_t length = sequence_length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

namespace detail {

// Numbers make up much of all statements and pages: two digits at a time, from the last ones on.
void append_integer(std::string& text, std::int64_t value) {
  std::array<char, 20> digits;
  char* const end = digits.data() + digits.size();
  char* begin = end;
  const auto bits = static_cast<std::uint64_t>(value);
  std::uint64_t rest = value < 0 ? 0 - bits : bits;
  for (; rest >= 10; rest /= 100) {
    begin -= 2;
    std::memcpy(begin, &digit_pairs[static_cast<std::size_t>(rest % 100) * 2], 2);
  }
  if (rest > 0 || begin == end) *--begin = static_cast<char>('0' + rest);
  if (value < 0) *--begin = '-';
  text.append(begin, end);
}

}  // namespace detail
}  // namespace pradelis
