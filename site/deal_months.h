#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "site/context.h"
#include "site/deal_data.h"
#include "values/date.h"

/// Deals by month: open ones in the month in which they are expected, the others in the month in which
/// they were won or lost.
namespace pradelis::site {

/// A month of a year; months count from 1.
struct Month {
  std::int32_t year = 0;
  std::int32_t month = 1;

  Month plus(std::int32_t months) const;
  Date first_day() const;
  std::string name() const;        ///< "novembro de 2026"
  std::string short_name() const;  ///< "nov/26"
  std::string iso() const;         ///< "2026-11"

  static Month of(Date date);
};

/// The month of a text such as "2026-11" in the years that dates may be typed in, or `otherwise`.
Month parse_month(std::string_view text, Month otherwise);

/// Deals of one state in one month.
struct MonthlyDeals {
  struct Entry {
    std::int32_t id = 0;
    std::string name, company;
    double value = 0;
  };

  std::int64_t count = 0;
  double sum = 0;              ///< expected values; of won deals, the values at closing
  std::vector<Entry> largest;  ///< at most `shown`, the largest first

  static constexpr std::int32_t shown = 4;
};

inline constexpr std::int32_t months_read = 12;

/// Twelve months of one state; the thirteenth entry holds the open deals without an expected date.
using YearOfDeals = std::array<MonthlyDeals, months_read + 1>;

/// The visitor's deals of one state, from `first` on, of one salesperson or (0) of all whom he may see.
YearOfDeals read_months(Context& context, DealState state, Month first, std::int32_t salesperson);

}  // namespace pradelis::site
