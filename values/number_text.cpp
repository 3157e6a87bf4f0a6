#include "values/number_text.h"

#include <algorithm>
#include <charconv>

#include "values/white_space.h"

namespace pradelis {
namespace {

constexpr char decimal_comma = ',';
constexpr char thousands_point = '.';
constexpr std::string_view currency_sign = "R$";
constexpr std::int64_t exponent_limit = 1'000'000'000;  // far beyond any type, far from overflowing itself

constexpr bool is_digit(char letter) { return letter >= '0' && letter <= '9'; }

/// One pass over a text, as the platform reads numbers: symbols before the digits, digits with separators
/// and exponent, symbols after them. It is lenient within each of the three, and strict about their order.
class NumberReader {
 public:
  explicit NumberReader(std::string_view text) : rest_(text) {}

  std::optional<NumberText> read() {
    if (!read_prefix()) return std::nullopt;
    if (!has_currency_ && !has_comma_ && read_radix_mark()) {
      read_bits();
    } else if (!read_decimal()) {
      return std::nullopt;
    }
    read_suffix();
    const bool is_open = has_parenthesis_ && !number_.negative;
    if (is_open || !has_digits_ || !rest_.empty()) return std::nullopt;
    return std::move(number_);
  }

 private:
  bool starts_with(char letter) const { return !rest_.empty() && rest_.front() == letter; }

  bool take(char letter) {
    if (!starts_with(letter)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool take_currency() {
    if (!rest_.starts_with(currency_sign)) return false;
    rest_.remove_prefix(currency_sign.size());
    return has_currency_ = true;
  }

  /// Each symbol at most once, in any order. False where a point stands, which has its place between digits.
  bool read_prefix() {
    for (;;) {
      if (take(decimal_comma)) return has_comma_ = true;
      if (starts_with(thousands_point)) return false;
      if (skip_spaces(rest_)) continue;
      if (!has_plus_ && take('+')) {
        has_plus_ = true;
      } else if (!has_minus_ && take('-')) {
        has_minus_ = number_.negative = true;
      } else if (!has_parenthesis_ && take('(')) {
        has_parenthesis_ = true;
      } else if (has_currency_ || !take_currency()) {
        return true;
      }
    }
  }

  bool read_radix_mark() {
    if (rest_.size() < 2 || rest_[0] != '&') return false;
    const char mark = rest_[1];
    if (mark == 'H' || mark == 'h') {
      bits_per_digit_ = 4;
    } else if (mark == 'O' || mark == 'o') {
      bits_per_digit_ = 3;
    } else {
      return false;
    }
    rest_.remove_prefix(2);
    return number_.is_bits = true;
  }

  void read_bits() {
    constexpr std::uint64_t all_ones = std::numeric_limits<std::uint64_t>::max();
    while (!rest_.empty()) {
      unsigned digit = 0;
      const auto parsed = std::from_chars(rest_.data(), rest_.data() + 1, digit, 1 << bits_per_digit_);
      if (parsed.ec != std::errc()) return;
      const bool fits = number_.bits <= all_ones >> bits_per_digit_;
      number_.bits = fits ? number_.bits << bits_per_digit_ | digit : all_ones;
      has_digits_ = true;
      rest_.remove_prefix(1);
    }
  }

  /// False when an exponent was begun and has no digits. Points are passed over wherever they stand.
  bool read_decimal() {
    for (; !rest_.empty(); rest_.remove_prefix(1)) {
      const char letter = rest_.front();
      if (is_digit(letter)) {
        if (in_exponent_) {
          read_exponent_digits();
        } else {
          add_digit(letter);
        }
      } else if (letter == decimal_comma && !has_comma_ && !has_exponent_) {
        has_comma_ = true;
      } else if (is_exponent_mark(letter) && !has_exponent_ && !has_currency_) {
        has_exponent_ = in_exponent_ = true;
      } else if (in_exponent_ && letter == '-') {
        exponent_is_negative_ = true;
      } else if (letter != thousands_point && !(in_exponent_ && letter == '+')) {
        break;
      }
    }
    return !in_exponent_;
  }

  static bool is_exponent_mark(char letter) {
    return letter == 'e' || letter == 'E' || letter == 'd' || letter == 'D';
  }

  void add_digit(char digit) {
    has_digits_ = true;
    if (has_comma_) --number_.exponent;
    if (digit != '0' || !number_.digits.empty()) number_.digits += digit;
  }

  /// Leaves the last digit standing for the loop that calls it.
  void read_exponent_digits() {
    std::int64_t exponent = 0;
    for (;; rest_.remove_prefix(1)) {
      exponent = std::min(exponent * 10 + (rest_.front() - '0'), exponent_limit);
      if (rest_.size() == 1 || !is_digit(rest_[1])) break;
    }
    number_.exponent += exponent_is_negative_ ? -exponent : exponent;
    in_exponent_ = false;
  }

  /// Symbols may be repeated here; a sign only where none of its kind stood before the digits.
  void read_suffix() {
    for (;;) {
      if (skip_spaces(rest_)) continue;
      if ((!has_minus_ && take('-')) || (has_parenthesis_ && take(')'))) {
        number_.negative = true;
      } else if (!(!has_plus_ && take('+')) &&
                 !(!number_.is_bits && (take(thousands_point) || take_currency()))) {
        return;
      }
    }
  }

  std::string_view rest_;
  NumberText number_;
  int bits_per_digit_ = 0;
  bool has_plus_ = false;
  bool has_minus_ = false;
  bool has_parenthesis_ = false;
  bool has_currency_ = false;
  bool has_comma_ = false;
  bool has_exponent_ = false;
  bool has_digits_ = false;
  bool in_exponent_ = false;
  bool exponent_is_negative_ = false;
};

double bits_to_double(std::uint64_t bits) {
  // The platform takes the form for a 32-bit integer here.
  constexpr std::uint64_t lowest = 0x8000'0000;
  if (bits > lowest) raise(error_number::overflow);
  return bits == lowest ? -static_cast<double>(bits) : static_cast<double>(bits);
}

bool rounds_up(std::string_view fraction, bool is_odd) {
  if (fraction.empty() || fraction.front() < '5') return false;
  const bool is_half = fraction.front() == '5' && fraction.find_first_not_of('0', 1) == fraction.npos;
  return !is_half || is_odd;
}

}  // namespace

std::optional<NumberText> read_number(std::string_view text) { return NumberReader(text).read(); }

double to_double(const NumberText& number) {
  if (number.is_bits) return bits_to_double(number.bits);
  if (number.digits.empty()) return 0;
  const std::string decimal = number.digits + 'e' + std::to_string(number.exponent);
  double value = 0;
  const auto parsed = std::from_chars(decimal.data(), decimal.data() + decimal.size(), value);
  if (parsed.ec == std::errc::result_out_of_range) {
    const bool is_tiny = number.exponent + static_cast<std::int64_t>(number.digits.size()) < 0;
    if (!is_tiny) raise(error_number::overflow);
    value = 0;
  }
  return number.negative ? -value : value;
}

std::optional<std::uint64_t> rounded_magnitude(const NumberText& number) {
  const std::string_view digits = number.digits;
  const std::int64_t whole_digits = static_cast<std::int64_t>(digits.size()) + number.exponent;
  if (digits.empty() || whole_digits < 0) return 0;
  if (whole_digits > std::numeric_limits<std::uint64_t>::digits10 + 1) return std::nullopt;

  std::uint64_t magnitude = 0;
  const auto kept = std::min(static_cast<std::size_t>(whole_digits), digits.size());
  std::string whole(digits.substr(0, kept));
  whole.append(static_cast<std::size_t>(whole_digits) - kept, '0');
  if (!whole.empty()) {
    const auto parsed = std::from_chars(whole.data(), whole.data() + whole.size(), magnitude);
    if (parsed.ec != std::errc()) return std::nullopt;
  }
  if (!rounds_up(digits.substr(kept), magnitude % 2 != 0)) return magnitude;
  if (magnitude == std::numeric_limits<std::uint64_t>::max()) return std::nullopt;
  return magnitude + 1;
}

}  // namespace pradelis
