#include "values/decimal_digits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace pradelis {

DecimalDigits::DecimalDigits(double value) {
  if (value == 0) return;
  is_negative_ = value < 0;
  std::array<char, read_digits + 8> text;  // d.ddd…e-308
  const char* const end = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                        std::chars_format::scientific, read_digits - 1)
                              .ptr;
  digits_[0] = text[0];
  std::copy_n(text.data() + 2, read_digits - 1, digits_ + 1);
  count_ = read_digits;
  const char* exponent = text.data() + read_digits + 2;
  if (*exponent == '+') ++exponent;
  std::from_chars(exponent, end, point_);
  ++point_;
  keep(max_digits);
}

void DecimalDigits::keep(int count) {
  if (count < count_) {
    const bool rounds_up = count >= 0 && digits_[count] >= '5';
    count_ = std::max(count, 0);
    if (rounds_up) add_one_to_last_digit();
  }
  drop_trailing_zeros();
}

void DecimalDigits::add_one_to_last_digit() {
  while (count_ > 0 && digits_[count_ - 1] == '9') --count_;
  if (count_ > 0) {
    ++digits_[count_ - 1];
  } else {
    digits_[0] = '1';
    count_ = 1;
    ++point_;
  }
}

void DecimalDigits::drop_trailing_zeros() {
  while (count_ > 0 && digits_[count_ - 1] == '0') --count_;
  if (count_ == 0) point_ = 0;
}

}  // namespace pradelis
