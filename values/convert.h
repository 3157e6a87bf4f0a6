#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "values/variant.h"

/// Conversions between the types of a variant, as the platform's automation layer does them under
/// Brazilian settings, on every operating system and under every locale of the process alike:
/// decimal comma, point for thousands, "R$", d/m/y dates, 24-hour time with seconds.
///
/// Failures common to all: error 13 for a text or a type that does not fit, error 94 for Null,
/// error 13 for Missing, error 6 for a number outside the target's range. Empty counts as 0, False
/// and the empty text.
namespace pradelis {

bool to_boolean(const Variant& value);
std::uint8_t to_uint8(const Variant& value);
/// Fractions round to the nearest integer, halves to even; so do the 32- and 64-bit conversions.
std::int16_t to_int16(const Variant& value);
std::int32_t to_int32(const Variant& value);
std::int64_t to_int64(const Variant& value);
double to_double(const Variant& value);
/// Error 6 for a number outside the years 100 to 9999.
Date to_date(const Variant& value);
/// Doubles print with at most 15 significant digits; a date without time of day prints the date
/// alone, one without a day the time alone; Booleans print "Verdadeiro" and "Falso".
std::string to_text(const Variant& value);
/// The object held. Raises error 13 when no object is held, error 91 when it is a reference to none.
ObjectPtr to_object(const Variant& value);

/// Appends the text of `value` to `text`: as `to_text`, but Null adds nothing.
void append_text(std::string& text, const Variant& value);

/// The number that a text means, or nothing when it is none or too large for a double. Blanks around it, the
/// currency sign, parentheses or a sign before or after it, points between digits, exponents (e or d), and
/// hexadecimal ("&HFF") and octal ("&O17") forms are understood. A hexadecimal or octal form is a bit
/// pattern: its meaning depends on the integer type that a text is converted to ("&HFFFF" is -1 as a 16-bit
/// integer), here it is read as 32 bits.
std::optional<double> parse_number(std::string_view text);

/// The date that a text means, or nothing when it is none: day first, then the other orders that
/// make a date (month-day-year, year-month-day, year-day-month), month names, with or without time of day.
/// Two-digit years 00 to 29 are 2000s, 30 to 99 are 1900s. Two numbers are a day of the current year, or
/// else month and year.
std::optional<Date> parse_date(std::string_view text);

/// Whether `value` is a number, a Boolean or Empty, or a text that means a number. Dates are not numbers.
bool is_numeric(const Variant& value);
/// Whether `value` is a date or a text that means one.
bool is_date(const Variant& value);

/// Decimal text of an integer.
std::string to_text(std::int32_t value);
std::string to_text(std::int64_t value);
/// At most 15 significant digits, decimal comma; an exponent ("1E+15", "1E-05") for numbers from 1E+15 on,
/// below 0,0001, and where more than 15 digits would follow the comma.
std::string to_text(double value);
/// Rounded to the second. Raises error 5 when `value` lies outside the years 100 to 9999.
std::string to_text(Date value);

/// `value` with `decimals` digits after the comma (0 to 99), halves rounded away from zero, a leading
/// zero, points for thousands when `grouping`; negative numbers in parentheses when `parentheses`,
/// else with a leading minus sign, which stays when the number rounds to zero. Raises error 5 for any
/// other `decimals`.
std::string format_number(double value, int decimals, bool grouping = true, bool parentheses = false);

}  // namespace pradelis
