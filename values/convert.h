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
Date to_date(const Variant& value);
/// Doubles print with at most 15 significant digits; a date without time of day prints the date
/// alone, one without a day the time alone; Booleans print "Verdadeiro" and "Falso".
std::string to_text(const Variant& value);
/// The object held. Raises error 13 when no object is held, error 91 when it is a reference to none.
ObjectPtr to_object(const Variant& value);

/// Appends the text of `value` to `text`: as `to_text`, but Null adds nothing.
void append_text(std::string& text, const Variant& value);

/// The number that a text means, or nothing when it is none. Blanks around it, the currency sign,
/// parentheses or a sign before or after it, points between digits, exponents (e or d), and
/// hexadecimal ("&HFF") and octal ("&O17") forms are understood.
std::optional<double> parse_number(std::string_view text);

/// The date that a text means, or nothing when it is none: day first, then the other orders that
/// make a date, month names, with or without time of day. Two-digit years 00 to 29 are 2000s.
std::optional<Date> parse_date(std::string_view text);

/// Whether `value` is a number, or Empty, or a text that means a number. Dates are not numbers.
bool is_numeric(const Variant& value);
/// Whether `value` is a date or a text that means one.
bool is_date(const Variant& value);

/// Decimal text of an integer.
std::string to_text(std::int32_t value);
std::string to_text(std::int64_t value);
/// At most 15 significant digits, decimal comma, "1E+15" and "1E-05" where the platform does so.
std::string to_text(double value);
std::string to_text(Date value);

/// `value` with `decimals` digits after the comma (0 to 99), halves rounded away from zero, a leading
/// zero, points for thousands when `grouping`; negative numbers in parentheses when `parentheses`,
/// else with a leading minus sign.
std::string format_number(double value, int decimals, bool grouping = true, bool parentheses = false);

}  // namespace pradelis
