#include "site/format.h"

#include <array>
#include <cmath>

#include "values/clock.h"
#include "values/convert.h"

namespace pradelis::site {
namespace {

std::string padded(std::int32_t number, std::size_t width) {
  std::string digits = std::to_string(number);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

std::string money_with_decimals(double amount, int decimals) {
  return (amount < 0 ? "-R$\u00a0" : "R$\u00a0") + format_number(std::abs(amount), decimals);
}

std::string days(std::int32_t count) { return std::to_string(count) + (count == 1 ? " dia" : " dias"); }

}  // namespace

std::string money_text(double amount) { return money_with_decimals(amount, 2); }

std::string short_money_text(double amount) {
  constexpr double widest_with_cents = 99'999.995;
  return money_with_decimals(amount, std::abs(amount) < widest_with_cents ? 2 : 0);
}

std::string money_text(const Variant& amount) {
  return amount.is_null() || amount.is_empty() ? std::string() : money_text(to_double(amount));
}

std::string amount_text(double amount) { return format_number(amount, 2); }

std::string day_text(Date date) {
  const DateParts parts = parts_of(date);
  return padded(parts.day, 2) + "/" + padded(parts.month, 2) + "/" + padded(parts.year, 4);
}

std::string day_text(const Variant& date) {
  return date.is_null() || date.is_empty() ? std::string() : day_text(to_date(date));
}

std::string long_day_text(Date date) {
  static constexpr std::array weekdays = {"sábado",       "domingo",      "segunda-feira", "terça-feira",
                                          "quarta-feira", "quinta-feira", "sexta-feira"};
  static constexpr std::array months = {"janeiro",  "fevereiro", "março",    "abril",
                                        "maio",     "junho",     "julho",    "agosto",
                                        "setembro", "outubro",   "novembro", "dezembro"};
  const DateParts parts = parts_of(date);
  // Day 0 was a Saturday.
  const auto weekday = static_cast<std::size_t>(((day_number(date) % 7) + 7) % 7);
  return std::string(weekdays[weekday]) + ", " + std::to_string(parts.day) + " de " +
         months[static_cast<std::size_t>(parts.month - 1)] + " de " + std::to_string(parts.year);
}

std::string iso_day(Date date) {
  const DateParts parts = parts_of(date);
  return padded(parts.year, 4) + "-" + padded(parts.month, 2) + "-" + padded(parts.day, 2);
}

std::string distance_text(Date date) {
  const std::int32_t distance = day_number(date) - day_number(today());
  if (distance == 0) return "hoje";
  return distance < 0 ? "há " + days(-distance) : "em " + days(distance);
}

std::string count_text(std::int64_t count, const std::string& one, const std::string& many) {
  return format_number(static_cast<double>(count), 0) + " " + (count == 1 ? one : many);
}

std::string plain_text(const Variant& value) {
  std::string text;
  append_text(text, value);
  return text;
}

}  // namespace pradelis::site
