#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "values/convert.h"
#include "values/decimal_digits.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis {
namespace {

constexpr int max_decimals = 99;

std::string not_finite_text(double value) {
  if (std::isnan(value)) return "-1,#IND";
  return value < 0 ? "-1,#INF" : "1,#INF";
}

/// The platform turns to an exponent where the number has more than 15 whole digits, or would need more than
/// 15 digits after the comma, or starts with more than three zeros after it.
bool needs_exponent(const DecimalDigits& number) {
  const int decimals = static_cast<int>(number.digits().size()) - number.point();
  return number.point() > DecimalDigits::max_digits || decimals > DecimalDigits::max_digits ||
         number.point() < -3;
}

std::string exponent_form(const DecimalDigits& number) {
  std::string text(number.digits().substr(0, 1));
  if (number.digits().size() > 1) text.append(1, ',').append(number.digits(), 1);
  const int exponent = number.point() - 1;
  text += exponent < 0 ? "E-" : "E+";
  if (std::abs(exponent) < 10) text += '0';
  detail::append_integer(text, std::abs(exponent));
  return text;
}

std::string whole_digits(const DecimalDigits& number) {
  if (number.point() <= 0) return "0";
  const auto point = static_cast<std::size_t>(number.point());
  std::string text(number.digits().substr(0, point));
  text.append(point - text.size(), '0');
  return text;
}

/// The digits after the comma, without zeros at the end.
std::string decimal_digits(const DecimalDigits& number) {
  if (number.point() <= 0) {
    return std::string(static_cast<std::size_t>(-number.point()), '0').append(number.digits());
  }
  const auto point = std::min(static_cast<std::size_t>(number.point()), number.digits().size());
  return std::string(number.digits().substr(point));
}

std::string plain_form(const DecimalDigits& number) {
  std::string text = whole_digits(number);
  const std::string decimals = decimal_digits(number);
  if (!decimals.empty()) text.append(1, ',').append(decimals);
  return text;
}

void insert_thousands_points(std::string& digits) {
  for (std::size_t position = digits.size(); position > 3;) {
    position -= 3;
    digits.insert(position, 1, '.');
  }
}

}  // namespace

std::string to_text(double value) {
  constexpr double first_exponent = 1e15;
  if (std::fabs(value) < first_exponent && value == std::trunc(value)) {
    return to_text(static_cast<std::int64_t>(value));
  }
  if (!std::isfinite(value)) return not_finite_text(value);
  const DecimalDigits number(value);
  const std::string text = needs_exponent(number) ? exponent_form(number) : plain_form(number);
  return number.is_negative() ? '-' + text : text;
}

std::string format_number(double value, int decimals, bool grouping, bool parentheses) {
  if (decimals < 0 || decimals > max_decimals) raise(error_number::invalid_argument);
  if (!std::isfinite(value)) return not_finite_text(value);
  DecimalDigits number(value);
  number.round_to(decimals);

  std::string text = whole_digits(number);
  if (grouping) insert_thousands_points(text);
  if (decimals > 0) {
    std::string digits = decimal_digits(number);
    digits.resize(static_cast<std::size_t>(decimals), '0');
    text.append(1, ',').append(digits);
  }
  if (!number.is_negative()) return text;
  return parentheses ? '(' + text + ')' : '-' + text;
}

}  // namespace pradelis
