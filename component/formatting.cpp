#include <cstdint>
#include <string>

#include "component/crm.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

/// A typed number with a decimal point gets a decimal comma: a point followed by at most two characters
/// is one when there is no comma; a point before three digits separates thousands.
std::string with_decimal_comma(std::string number) {
  if (number.size() < 3 || number.find(',') != std::string::npos) return number;
  const std::size_t point = number.find_last_of('.');
  if (point != std::string::npos && point + 3 >= number.size()) number[point] = ',';
  return number;
}

std::string two_digits(std::int32_t number) {
  std::string digits = to_text(number);
  if (digits.size() < 2) digits.insert(0, 1, '0');
  return digits;
}

/// Whether a value is exactly True: the Boolean, or the number that stands for it.
bool is_exactly_true(const Variant& value) {
  switch (value.type()) {
    case VariantType::Boolean:
      return value.get<bool>();
    case VariantType::Int16:
    case VariantType::Int32:
    case VariantType::Int64:
    case VariantType::Double:
      return to_double(value) == -1;
    default:
      return false;
  }
}

Date time_of_day(Date date) {
  DateParts parts = parts_of(date);
  return make_date({.hour = parts.hour, .minute = parts.minute, .second = parts.second});
}

}  // namespace

Variant CRM::FormataNumero(Variant& valor) {
  std::string number = is_numeric(valor) ? with_decimal_comma(to_text(valor)) : "0";
  valor = replace_all(number, ".", "");
  return to_double(valor);
}

Variant CRM::FormataOid(const Variant& valor) {
  if (valor.is_null()) return Variant::null();
  return to_int32(valor);
}

std::string CRM::converte(std::string& valor1) {
  if (const auto number = parse_number(with_decimal_comma(valor1))) valor1 = format_number(*number, 2);
  return valor1;
}

std::string CRM::DataAgora(const Variant& DATAEHORA) {
  const DateParts day = parts_of(today());
  std::string text = concat(two_digits(day.day), "/", two_digits(day.month), "/", day.year);
  if (is_exactly_true(DATAEHORA)) text += concat(" ", time_of_day(now()));
  return text;
}

std::string CRM::PrepararVariavel(const Variant& StrValue) {
  return replace_all(to_text(StrValue), "'", "''");
}

}  // namespace pradelis::component
