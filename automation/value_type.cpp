#include "automation/value_type.h"

#include <array>

#include "values/convert.h"
#include "values/error.h"

namespace pradelis::automation {

std::string_view type_name(VariantType type) noexcept {
  static constexpr std::array<std::string_view, 14> names = {"empty", "null",  "missing", "boolean", "uint8",
                                                             "int16", "int32", "int64",   "double",  "date",
                                                             "text",  "bytes", "array",   "object"};
  return names[static_cast<std::size_t>(type)];
}

bool holds(VariantType held, ValueType wanted) noexcept {
  switch (wanted) {
    case ValueType::Boolean:
      return held == VariantType::Boolean;
    case ValueType::UInt8:
      return held == VariantType::UInt8;
    case ValueType::Int16:
      return held == VariantType::Int16;
    case ValueType::Int32:
      return held == VariantType::Int32;
    case ValueType::Int64:
      return held == VariantType::Int64;
    case ValueType::Double:
      return held == VariantType::Double;
    case ValueType::Date:
      return held == VariantType::Date;
    case ValueType::Text:
      return held == VariantType::Text;
    case ValueType::Object:
      return held == VariantType::Object;
    case ValueType::Variant:
    case ValueType::Matrix:
      return true;
    case ValueType::None:
      break;
  }
  return false;
}

Variant convert_to(ValueType wanted, const Variant& value) {
  switch (wanted) {
    case ValueType::Boolean:
      return to_boolean(value);
    case ValueType::UInt8:
      return to_uint8(value);
    case ValueType::Int16:
      return to_int16(value);
    case ValueType::Int32:
      return to_int32(value);
    case ValueType::Int64:
      return to_int64(value);
    case ValueType::Double:
      return to_double(value);
    case ValueType::Date:
      return to_date(value);
    case ValueType::Text:
      return to_text(value);
    case ValueType::Object:
      return value.get<ObjectPtr>();
    case ValueType::Variant:
    case ValueType::Matrix:
    case ValueType::None:
      break;
  }
  return value;
}

}  // namespace pradelis::automation
