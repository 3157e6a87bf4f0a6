#pragma once

#include <string>
#include <string_view>

namespace pradelis {

/// The decimal value that the platform shows for a double: rounded to 15 significant digits.
class DecimalDigits {
 public:
  static constexpr int max_digits = 15;

  /// `value` must be finite.
  explicit DecimalDigits(double value);

  /// Never set for zero.
  bool is_negative() const { return is_negative_; }
  /// Without zeros at either end; empty for zero.
  std::string_view digits() const { return {digits_, static_cast<std::size_t>(count_)}; }
  /// Where the decimal point stands, counted from the first digit: the value is 0.digits * 10^point.
  int point() const { return point_; }

  /// Rounds to `decimals` digits after the point, halves away from zero.
  void round_to(int decimals);

 private:
  void drop_trailing_zeros();

  bool is_negative_ = false;
  int count_ = 0;
  int point_ = 0;
  char digits_[max_digits] = {};
};

}  // namespace pradelis
