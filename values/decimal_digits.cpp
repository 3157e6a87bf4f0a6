#include "values/decimal_digits.h"

#include <array>
#include <charconv>
#include <cmath>

namespace pradelis {

DecimalDigits::DecimalDigits(double value) {
  if (value == 0) return;
  is_negative_ = value < 0;
  std::array<char, 32> text;  // d.dddddddddddddde-308
  const char* const end = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                        std::chars_format::scientific, max_digits - 1)
                              .ptr;
  digits_[0] = text[0];
  for (int i = 1; i < max_digits; ++i) digits_[i] = text[static_cast<std::size_t>(i) + 1];
  count_ = max_digits;
  const char* exponent = text.data() + max_digits + 2;
  if (*exponent == '+') ++exponent;
  std::from_chars(exponent, end, point_);
  ++point_;
  drop_trailing_zeros();
}

void DecimalDigits::round_to(int decimals) {
  const int kept = point_ + decimals;
  if (kept >= count_) return;
  const bool rounds_up = kept >= 0 && digits_[kept] >= '5';
  count_ = kept < 0 ? 0 : kept;
  if (rounds_up) {
    while (count_ > 0 && digits_[count_ - 1] == '9') --count_;
    if (count_ > 0) {
      ++digits_[count_ - 1];
    } else {
      digits_[0] = '1';
      count_ = 1;
      ++point_;
    }
  }
  drop_trailing_zeros();
}

void DecimalDigits::drop_trailing_zeros() {
  while (count_ > 0 && digits_[count_ - 1] == '0') --count_;
  if (count_ == 0) {
    is_negative_ = false;
    point_ = 0;
  }
}

}  // namespace pradelis
