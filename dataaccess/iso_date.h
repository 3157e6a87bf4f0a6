#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "values/date.h"

/// Dates as texts that sort by time: the form in which engines without a date type keep them.
namespace pradelis::dataaccess {

/// Room for the longest form, "9999-12-31 23:59:59.999".
inline constexpr std::size_t iso_date_size = 23;

/// Writes `date` to `buffer` (`iso_date_size` bytes) as "YYYY-MM-DD HH:MM:SS", with ".mmm" only when
/// there are milliseconds, or as "YYYY-MM-DD" when `day_only`. The text points into the buffer.
/// Raises error 5 for a date outside the years 100 to 9999.
std::string_view write_iso_date(Date date, bool day_only, char* buffer);

/// The date of "YYYY-MM-DD", alone or with " HH:MM", " HH:MM:SS" or " HH:MM:SS.fff" ("T" may stand for
/// the blank); nothing for any other text.
std::optional<Date> read_iso_date(std::string_view text);

}  // namespace pradelis::dataaccess
