#include <cmath>

#include "values/convert.h"

namespace pradelis {
namespace {

void append_two_digits(std::string& text, std::int32_t number) {
  text += static_cast<char>('0' + number / 10);
  text += static_cast<char>('0' + number % 10);
}

Date rounded_to_seconds(Date date) {
  constexpr double seconds_per_day = 86'400;
  const double day = std::trunc(date.serial);
  const double seconds = std::round(std::fabs(date.serial - day) * seconds_per_day);
  if (seconds == seconds_per_day) return {day + 1};
  return {day < 0 ? day - seconds / seconds_per_day : day + seconds / seconds_per_day};
}

void append_day(std::string& text, const DateParts& parts) {
  append_two_digits(text, parts.day);
  text += '/';
  append_two_digits(text, parts.month);
  text += '/';
  text += to_text(parts.year);
}

void append_time(std::string& text, const DateParts& parts) {
  append_two_digits(text, parts.hour);
  text += ':';
  append_two_digits(text, parts.minute);
  text += ':';
  append_two_digits(text, parts.second);
}

}  // namespace

std::string to_text(Date date) {
  constexpr double no_time = 1e-12;  // what the platform takes for the noise of a date without time
  const double day = std::trunc(date.serial);
  const bool has_day = day != 0;
  const bool has_time = !has_day || std::fabs(date.serial - day) >= no_time;
  const DateParts parts = parts_of(rounded_to_seconds(date));
  std::string text;
  if (has_day) append_day(text, parts);
  if (has_day && has_time) text += ' ';
  if (has_time) append_time(text, parts);
  return text;
}

}  // namespace pradelis
