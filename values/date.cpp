#include "values/date.h"

#include <cmath>

#include "values/calendar.h"
#include "values/error.h"

namespace pradelis {
namespace {

constexpr std::int64_t milliseconds_per_day = 86'400'000;

struct DayAndTime {
  std::int32_t day_number;
  std::int64_t millisecond_of_day;
};

bool is_valid(const DateParts& parts) {
  return parts.year >= first_year && parts.year <= last_year && parts.month >= 1 && parts.month <= 12 &&
         parts.day >= 1 && parts.day <= days_in_month(parts.month, parts.year) && parts.hour >= 0 &&
         parts.hour <= 23 && parts.minute >= 0 && parts.minute <= 59 && parts.second >= 0 &&
         parts.second <= 59 && parts.millisecond >= 0 && parts.millisecond <= 999;
}

/// Rounds to the millisecond, so that the noise of the fraction never shows as 23:59:59.999 of the day
/// before.
DayAndTime split_serial(Date date) {
  const double day = std::trunc(date.serial);
  if (!(day >= first_day && day <= last_day)) raise(error_number::invalid_argument);
  const double fraction = std::fabs(date.serial - day);
  DayAndTime result = {static_cast<std::int32_t>(day),
                       std::llround(fraction * static_cast<double>(milliseconds_per_day))};
  if (result.millisecond_of_day == milliseconds_per_day) {
    if (day == last_day) raise(error_number::invalid_argument);
    ++result.day_number;
    result.millisecond_of_day = 0;
  }
  return result;
}

double linear_time(Date date) {
  const double day = std::trunc(date.serial);
  return day + std::fabs(date.serial - day);
}

}  // namespace

Date make_date(const DateParts& parts) {
  if (!is_valid(parts)) raise(error_number::invalid_argument);
  const std::int64_t day = day_number_of(parts.year, parts.month, parts.day);
  const std::int64_t time =
      ((parts.hour * std::int64_t{60} + parts.minute) * 60 + parts.second) * 1000 + parts.millisecond;
  // One division of a whole number gives the double nearest to the exact value, so equal parts always
  // make equal dates.
  const std::int64_t signed_time = day < 0 ? -time : time;
  return {static_cast<double>(day * milliseconds_per_day + signed_time) /
          static_cast<double>(milliseconds_per_day)};
}

DateParts parts_of(Date date) {
  const DayAndTime split = split_serial(date);
  const CalendarDay day = calendar_day(split.day_number);
  const auto time = static_cast<std::int32_t>(split.millisecond_of_day);
  DateParts parts;
  parts.year = day.year;
  parts.month = day.month;
  parts.day = day.day;
  parts.hour = time / 3'600'000;
  parts.minute = time / 60'000 % 60;
  parts.second = time / 1000 % 60;
  parts.millisecond = time % 1000;
  return parts;
}

std::int32_t day_number(Date date) { return split_serial(date).day_number; }

std::partial_ordering compare(Date left, Date right) { return linear_time(left) <=> linear_time(right); }

}  // namespace pradelis
