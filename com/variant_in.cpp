#include "com/variant_in.h"

#include <cstdint>
#include <cstring>
#include <limits>

#include "com/error_info.h"
#include "com/foreign_object.h"
#include "com/objects.h"
#include "com/text.h"
#include "values/error.h"

namespace pradelis::com {
namespace {

template <class T>
T at(const void* place) {
  T value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

Variant from_unsigned(std::uint64_t value) {
  if (value <= std::numeric_limits<std::int32_t>::max()) return static_cast<std::int32_t>(value);
  if (value <= std::numeric_limits<std::int64_t>::max()) return static_cast<std::int64_t>(value);
  return static_cast<double>(value);
}

Variant from_decimal(const DECIMAL& value) {
  constexpr BYTE negative = 0x80;
  if (value.scale == 0 && value.Hi32 == 0 && value.Lo64 <= std::numeric_limits<std::int64_t>::max()) {
    const auto magnitude = static_cast<std::int64_t>(value.Lo64);
    return value.sign == negative ? -magnitude : magnitude;
  }
  double result = 0;
  if (const HRESULT code = VarR8FromDec(const_cast<DECIMAL*>(&value), &result); FAILED(code))
    raise(number_of(code));
  return result;
}

Variant from_currency(const CY& value) {
  constexpr double parts = 10000;
  return static_cast<double>(value.int64) / parts;
}

/// The platform's True is -1. Another value than -1 and 0, which only a caller past the type can give, is
/// handed on as the number that it is.
Variant from_boolean(VARIANT_BOOL value) {
  if (value == VARIANT_TRUE) return true;
  if (value == VARIANT_FALSE) return false;
  return static_cast<std::int16_t>(value);
}

Variant from_error_code(SCODE code) {
  if (code == DISP_E_PARAMNOTFOUND) return Variant::missing();
  raise(error_number::type_mismatch);
}

}  // namespace

Variant from_memory(VARTYPE type, const void* place) {
  if (type & VT_ARRAY) return from_safe_array(at<SAFEARRAY*>(place));
  switch (type) {
    case VT_EMPTY:
      return {};
    case VT_NULL:
      return Variant::null();
    case VT_BOOL:
      return from_boolean(at<VARIANT_BOOL>(place));
    case VT_UI1:
      return at<std::uint8_t>(place);
    case VT_I1:
      return static_cast<std::int16_t>(at<std::int8_t>(place));
    case VT_I2:
      return at<std::int16_t>(place);
    case VT_UI2:
      return static_cast<std::int32_t>(at<std::uint16_t>(place));
    case VT_I4:
    case VT_INT:
      return at<std::int32_t>(place);
    case VT_UI4:
    case VT_UINT:
      return from_unsigned(at<std::uint32_t>(place));
    case VT_I8:
      return at<std::int64_t>(place);
    case VT_UI8:
      return from_unsigned(at<std::uint64_t>(place));
    case VT_R4:
      return static_cast<double>(at<float>(place));
    case VT_R8:
      return at<double>(place);
    case VT_CY:
      return from_currency(at<CY>(place));
    case VT_DECIMAL:
      return from_decimal(at<DECIMAL>(place));
    case VT_DATE:
      return Date{at<double>(place)};
    case VT_BSTR:
      return from_bstr(at<BSTR>(place));
    case VT_ERROR:
      return from_error_code(at<SCODE>(place));
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return object_from(at<IUnknown*>(place));
    case VT_VARIANT:
      return from_variant(*static_cast<const VARIANT*>(place));
    default:
      raise(error_number::type_mismatch);
  }
}

Variant from_variant(const VARIANT& value) {
  if (value.vt & VT_BYREF) {
    const void* place = value.byref;
    if (!place) raise(error_number::type_mismatch);
    return from_memory(static_cast<VARTYPE>(value.vt & ~VT_BYREF), place);
  }
  // A decimal lies over the whole variant; everything else lies in the same place.
  if (value.vt == VT_DECIMAL) return from_decimal(value.decVal);
  return from_memory(value.vt, &value.byref);
}

Variant value_from_variant(const VARIANT& value) {
  constexpr int longest_chain = 8;
  Variant result = from_variant(value);
  for (int i = 0; i < longest_chain && result.is(VariantType::Object); ++i) {
    const auto foreign = std::dynamic_pointer_cast<ForeignObject>(result.get<ObjectPtr>());
    if (!foreign) break;
    result = foreign->default_value();
  }
  return result;
}

}  // namespace pradelis::com
