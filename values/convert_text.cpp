#include <array>
#include <charconv>

#include "values/boolean_text.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis {
namespace {

template <class Integer>
std::string integer_text(Integer value) {
  std::array<char, 20> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return std::string(digits.data(), end);
}

}  // namespace

std::string to_text(std::int32_t value) { return integer_text(value); }

std::string to_text(std::int64_t value) { return integer_text(value); }

std::string to_text(const Variant& value) {
  if (value.is_null()) raise(error_number::invalid_use_of_null);
  std::string text;
  append_text(text, value);
  return text;
}

void append_text(std::string& text, const Variant& value) {
  switch (value.type()) {
    case VariantType::Empty:
    case VariantType::Null:
      return;
    case VariantType::Boolean:
      text += value.get<bool>() ? true_text : false_text;
      return;
    case VariantType::UInt8:
      return detail::append_integer(text, value.get<std::uint8_t>());
    case VariantType::Int16:
      return detail::append_integer(text, value.get<std::int16_t>());
    case VariantType::Int32:
      return detail::append_integer(text, value.get<std::int32_t>());
    case VariantType::Int64:
      return detail::append_integer(text, value.get<std::int64_t>());
    case VariantType::Double:
      text += to_text(value.get<double>());
      return;
    case VariantType::Date:
      text += to_text(value.get<Date>());
      return;
    case VariantType::Text:
      text += value.get<std::string>();
      return;
    case VariantType::Missing:
    case VariantType::Bytes:
    case VariantType::Array:
    case VariantType::Object:
      raise(error_number::type_mismatch);
  }
}

}  // namespace pradelis
