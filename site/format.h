#pragma once

#include <cstdint>
#include <string>

#include "values/date.h"
#include "values/variant.h"

/// How values are shown and typed on the pages.
namespace pradelis::site {

/// "R$ 1.234,56", with a blank that keeps the line together.
std::string money_text(double amount);
/// As above; empty for Null.
std::string money_text(const Variant& amount);
/// As money_text, without the cents of sums that would be too wide for a figure: "R$ 1.234.567".
std::string short_money_text(double amount);
/// "1.234,56": the form that amounts are typed in.
std::string amount_text(double amount);
/// dd/mm/aaaa.
std::string day_text(Date date);
/// As above; empty for Null.
std::string day_text(const Variant& date);
/// "domingo, 22 de novembro de 2026".
std::string long_day_text(Date date);
/// aaaa-mm-dd: the form that date inputs take.
std::string iso_day(Date date);
/// "hoje", "há 3 dias", "em 2 dias", counted from today.
std::string distance_text(Date date);
/// "1 empresa", "2.345 empresas".
std::string count_text(std::int64_t count, const std::string& one, const std::string& many);
/// The text of a value; empty for Null.
std::string plain_text(const Variant& value);

}  // namespace pradelis::site
