#pragma once

#include <cstdint>

/// Arithmetic of the Gregorian calendar, extended backwards to the year 100, for the files of this folder.
namespace pradelis {

constexpr std::int32_t first_year = 100;
constexpr std::int32_t last_year = 9999;

/// Day numbers of 1 January of the first year and 31 December of the last.
constexpr std::int32_t first_day = -657434;
constexpr std::int32_t last_day = 2958465;

constexpr bool is_leap_year(std::int32_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/// Number of days of `month` (1 to 12) in `year`.
std::int32_t days_in_month(std::int32_t month, std::int32_t year);

/// Days from 30 December 1899 to this day; the day must exist.
std::int32_t day_number_of(std::int32_t year, std::int32_t month, std::int32_t day);

struct CalendarDay {
  std::int32_t year;
  std::int32_t month;
  std::int32_t day;
};

/// The day that lies `day_number` days after 30 December 1899.
CalendarDay calendar_day(std::int32_t day_number);

}  // namespace pradelis
