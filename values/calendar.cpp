#include "values/calendar.h"

#include <array>

namespace pradelis {
namespace {

// Counted in years that begin in March, the leap day is the last of its year, so that the months before
// it have the same lengths in every year.
constexpr std::int32_t days_per_era = 146097;       // 400 years
constexpr std::int32_t days_before_epoch = 693899;  // from 1 March of year 0 to 30 December 1899

constexpr std::int32_t day_of_march_year(std::int32_t month, std::int32_t day) {
  const std::int32_t months_since_march = (month + 9) % 12;
  return (153 * months_since_march + 2) / 5 + day - 1;
}

}  // namespace

std::int32_t days_in_month(std::int32_t month, std::int32_t year) {
  constexpr std::array<std::int32_t, 12> lengths = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month == 2 && is_leap_year(year)) return 29;
  return lengths[static_cast<std::size_t>(month - 1)];
}

std::int32_t day_number_of(std::int32_t year, std::int32_t month, std::int32_t day) {
  const std::int32_t march_year = month <= 2 ? year - 1 : year;
  const std::int32_t era = march_year / 400;
  const std::int32_t year_of_era = march_year % 400;
  const std::int32_t day_of_era =
      year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_march_year(month, day);
  return era * days_per_era + day_of_era - days_before_epoch;
}

CalendarDay calendar_day(std::int32_t day_number) {
  const std::int32_t days = day_number + days_before_epoch;
  const std::int32_t era = days / days_per_era;
  const std::int32_t day_of_era = days % days_per_era;
  const std::int32_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::int32_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int32_t months_since_march = (5 * day_of_year + 2) / 153;
  const std::int32_t day = day_of_year - (153 * months_since_march + 2) / 5 + 1;
  const std::int32_t month = months_since_march < 10 ? months_since_march + 3 : months_since_march - 9;
  const std::int32_t year = era * 400 + year_of_era + (month <= 2 ? 1 : 0);
  return {year, month, day};
}

}  // namespace pradelis
