#include "values/convert.h"

#include <cmath>
#include <limits>

#include "values/boolean_text.h"
#include "values/calendar.h"
#include "values/error.h"
#include "values/number_text.h"

namespace pradelis {
namespace {

/// Raises the error that all conversions share for what has no value of the wanted kind.
[[noreturn]] void refuse(VariantType type) {
  raise(type == VariantType::Null ? error_number::invalid_use_of_null : error_number::type_mismatch);
}

NumberText required_number(std::string_view text) {
  std::optional<NumberText> number = read_number(text);
  if (!number) raise(error_number::type_mismatch);
  return std::move(*number);
}

/// The nearest integer, halves to even, whatever rounding mode the process has set.
double round_half_to_even(double value) {
  const bool is_half = std::fabs(value - std::trunc(value)) == 0.5;
  return is_half ? 2 * std::round(value / 2) : std::round(value);
}

template <class Integer>
Integer round_to(double value) {
  constexpr double lowest = static_cast<double>(std::numeric_limits<Integer>::min()) - 0.5;
  constexpr double beyond = static_cast<double>(std::numeric_limits<Integer>::max()) + 0.5;
  if (!(value >= lowest && value < beyond)) raise(error_number::overflow);
  return static_cast<Integer>(round_half_to_even(value));
}

template <class Integer>
Integer narrow_to(std::int64_t value) {
  if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max()) {
    raise(error_number::overflow);
  }
  return static_cast<Integer>(value);
}

template <class Integer>
Integer convert_to(const Variant& value) {
  switch (value.type()) {
    case VariantType::Empty:
      return 0;
    case VariantType::Boolean:
      return static_cast<Integer>(value.get<bool>() ? -1 : 0);
    case VariantType::UInt8:
      return narrow_to<Integer>(value.get<std::uint8_t>());
    case VariantType::Int16:
      return narrow_to<Integer>(value.get<std::int16_t>());
    case VariantType::Int32:
      return narrow_to<Integer>(value.get<std::int32_t>());
    case VariantType::Int64:
      return narrow_to<Integer>(value.get<std::int64_t>());
    case VariantType::Double:
      return round_to<Integer>(value.get<double>());
    case VariantType::Date:
      return round_to<Integer>(value.get<Date>().serial);
    case VariantType::Text:
      return to_integer<Integer>(required_number(value.get<std::string>()));
    default:
      refuse(value.type());
  }
}

Date date_of_serial(double serial) {
  if (!(serial > first_day - 1 && serial < last_day + 1)) raise(error_number::overflow);
  return {serial};
}

bool boolean_of_text(std::string_view text) {
  if (const std::optional<bool> boolean = read_boolean(text)) return *boolean;
  return to_double(required_number(text)) != 0;
}

}  // namespace

bool to_boolean(const Variant& value) {
  switch (value.type()) {
    case VariantType::Boolean:
      return value.get<bool>();
    case VariantType::Text:
      return boolean_of_text(value.get<std::string>());
    default:
      return to_double(value) != 0;
  }
}

std::uint8_t to_uint8(const Variant& value) { return convert_to<std::uint8_t>(value); }

std::int16_t to_int16(const Variant& value) { return convert_to<std::int16_t>(value); }

std::int32_t to_int32(const Variant& value) {
  if (value.is(VariantType::Int32)) return value.get<std::int32_t>();
  return convert_to<std::int32_t>(value);
}

std::int64_t to_int64(const Variant& value) { return convert_to<std::int64_t>(value); }

double to_double(const Variant& value) {
  switch (value.type()) {
    case VariantType::Double:
      return value.get<double>();
    case VariantType::Date:
      return value.get<Date>().serial;
    case VariantType::Text:
      return to_double(required_number(value.get<std::string>()));
    default:
      return static_cast<double>(convert_to<std::int64_t>(value));
  }
}

Date to_date(const Variant& value) {
  if (value.is(VariantType::Date)) return value.get<Date>();
  if (!value.is(VariantType::Text)) return date_of_serial(to_double(value));
  const std::optional<Date> date = parse_date(value.get<std::string>());
  if (!date) raise(error_number::type_mismatch);
  return *date;
}

ObjectPtr to_object(const Variant& value) {
  const ObjectPtr& object = value.get<ObjectPtr>();
  if (!object) raise(error_number::object_not_set);
  return object;
}

std::optional<double> parse_number(std::string_view text) {
  const std::optional<NumberText> number = read_number(text);
  if (!number) return std::nullopt;
  try {
    return to_double(*number);
  } catch (const Error&) {  // too large to be a number here
    return std::nullopt;
  }
}

bool is_numeric(const Variant& value) {
  switch (value.type()) {
    case VariantType::Empty:
    case VariantType::Boolean:
    case VariantType::UInt8:
    case VariantType::Int16:
    case VariantType::Int32:
    case VariantType::Int64:
    case VariantType::Double:
      return true;
    case VariantType::Text:
      return parse_number(value.get<std::string>()).has_value();
    default:
      return false;
  }
}

bool is_date(const Variant& value) {
  return value.is(VariantType::Date) ||
         (value.is(VariantType::Text) && parse_date(value.get<std::string>()).has_value());
}

}  // namespace pradelis
