#pragma once

#include <compare>
#include <cstdint>

namespace pradelis {

/// A point in local time, counted as the platform's automation layer counts it: days since
/// 30 December 1899 in the whole part, the time of day in the fraction. For days before that date
/// the fraction still counts forward from midnight (-1.25 is 29 December 1899, 06:00).
/// Range: 1 January 100 to 31 December 9999.
struct Date {
  double serial = 0;

  friend bool operator==(Date, Date) = default;
};

/// A date taken apart. `month` and `day` start at 1, `hour` is 0 to 23.
struct DateParts {
  std::int32_t year = 1899;
  std::int32_t month = 12;
  std::int32_t day = 30;
  std::int32_t hour = 0;
  std::int32_t minute = 0;
  std::int32_t second = 0;
  std::int32_t millisecond = 0;
};

/// The date of these parts. Raises error 5 (invalid argument) when they name no day or no time, or
/// lie outside the years 100 to 9999.
Date make_date(const DateParts& parts);

/// The parts of `date`, rounded to the nearest millisecond.
/// Raises error 5 when `date` lies outside the years 100 to 9999.
DateParts parts_of(Date date);

/// The day number of `date`: the number of midnights from 30 December 1899 to it. The difference of
/// two day numbers is the number of calendar-day boundaries between two dates.
/// Raises error 5 when `date` lies outside the years 100 to 9999.
std::int32_t day_number(Date date);

/// Orders by time, also for days before 30 December 1899, where serials do not.
std::partial_ordering compare(Date left, Date right);

}  // namespace pradelis
