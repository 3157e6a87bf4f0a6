#include "site/typed_values.h"

#include <cstdint>

#include "values/convert.h"

namespace pradelis::site {
namespace {

constexpr std::int32_t first_year = 1900;
constexpr std::int32_t last_year = 2100;

}  // namespace

std::optional<Date> parse_day(std::string_view text) {
  const auto date = parse_date(text);
  if (!date) return std::nullopt;
  const DateParts parts = parts_of(*date);
  if (parts.year < first_year || parts.year > last_year) return std::nullopt;
  return make_date({parts.year, parts.month, parts.day, 0, 0, 0, 0});
}

}  // namespace pradelis::site
