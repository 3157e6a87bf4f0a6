#include "dataaccess/odbc/timestamps.h"

#include <cmath>
#include <cstdint>

#include "values/error.h"

namespace pradelis::dataaccess::odbc {
namespace {

constexpr std::int64_t milliseconds_of_day = 86'400'000;
constexpr std::int64_t microseconds_of_day = milliseconds_of_day * 1000;
/// From this serial on (the year 2079) a serial cannot tell microseconds apart.
constexpr double last_exact_serial = 65536;

/// Time of day, rounded; a whole day where it rounds up to midnight.
std::int64_t microseconds_of(Date date, bool exact) {
  const double fraction = std::fabs(date.serial - std::trunc(date.serial));
  if (exact) return std::llround(fraction * static_cast<double>(microseconds_of_day));
  return std::llround(fraction * static_cast<double>(milliseconds_of_day)) * 1000;
}

}  // namespace

SQL_TIMESTAMP_STRUCT to_timestamp(Date date, bool microseconds) {
  Date day{std::trunc(date.serial)};
  std::int64_t time = microseconds_of(date, microseconds && std::fabs(date.serial) < last_exact_serial);
  if (time == microseconds_of_day) {
    day.serial += 1;
    time = 0;
  }
  const DateParts parts = parts_of(day);
  SQL_TIMESTAMP_STRUCT moment{};
  moment.year = static_cast<SQLSMALLINT>(parts.year);
  moment.month = static_cast<SQLUSMALLINT>(parts.month);
  moment.day = static_cast<SQLUSMALLINT>(parts.day);
  const std::int64_t seconds = time / 1'000'000;
  moment.hour = static_cast<SQLUSMALLINT>(seconds / 3600);
  moment.minute = static_cast<SQLUSMALLINT>(seconds / 60 % 60);
  moment.second = static_cast<SQLUSMALLINT>(seconds % 60);
  moment.fraction = static_cast<SQLUINTEGER>(time % 1'000'000 * 1000);
  return moment;
}

SQL_DATE_STRUCT to_day(Date date) {
  const SQL_TIMESTAMP_STRUCT moment = to_timestamp(Date{std::trunc(date.serial)}, false);
  SQL_DATE_STRUCT day{};
  day.year = moment.year;
  day.month = moment.month;
  day.day = moment.day;
  return day;
}

Date from_timestamp(const SQL_TIMESTAMP_STRUCT& moment) {
  if (moment.year < 100) raise(error_number::value_does_not_fit);
  Date date = make_date({moment.year, moment.month, moment.day, moment.hour, moment.minute, moment.second,
                         static_cast<std::int32_t>(moment.fraction / 1'000'000)});
  const double rest = moment.fraction % 1'000'000 / 1000 / static_cast<double>(microseconds_of_day);
  date.serial += date.serial < 0 ? -rest : rest;
  return date;
}

Date from_time(const SQL_TIME_STRUCT& time) {
  return make_date({1899, 12, 30, time.hour, time.minute, time.second});
}

}  // namespace pradelis::dataaccess::odbc
