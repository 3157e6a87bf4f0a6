#pragma once

#include <cstddef>
#include <string_view>

namespace pradelis {

/// The decimal value that the platform shows for a double: rounded to 15 significant digits. All rounding
/// takes halves away from zero.
class DecimalDigits {
 public:
  static constexpr int max_digits = 15;

  /// `value` must be finite.
  explicit DecimalDigits(double value);

  /// Kept when the digits round to zero; never set for a value that is zero itself.
  bool is_negative() const { return is_negative_; }
  /// Without zeros at either end; empty for zero.
  std::string_view digits() const { return {digits_, static_cast<std::size_t>(count_)}; }
  /// Where the decimal point stands, counted from the first digit: the value is 0.digits * 10^point.
  int point() const { return point_; }

  /// Rounds to `decimals` digits after the point.
  void round_to(int decimals) { keep(point_ + decimals); }

 private:
  // More than are shown, so that a half is told from what lies just beside it.
  static constexpr int read_digits = 25;

  /// Rounds to the first `count` digits.
  void keep(int count);
  void add_one_to_last_digit();
  void drop_trailing_zeros();

  bool is_negative_ = false;
  int count_ = 0;
  int point_ = 0;
  char digits_[read_digits] = {};
};

}  // namespace pradelis
