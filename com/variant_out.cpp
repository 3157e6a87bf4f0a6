#include "com/variant_out.h"

#include <cstdint>
#include <utility>

#include "com/error_info.h"
#include "com/objects.h"
#include "com/owned_variant.h"
#include "com/text.h"
#include "values/convert.h"
#include "values/error.h"

namespace pradelis::com {
namespace {

DECIMAL decimal_of(std::int64_t value) {
  constexpr BYTE negative = 0x80;
  DECIMAL result{};
  if (value < 0) result.sign = negative;
  result.Lo64 = value < 0 ? 0 - static_cast<ULONGLONG>(value) : static_cast<ULONGLONG>(value);
  return result;
}

/// Frees a pointer's old content, and puts another in its place.
template <class Pointer, class Free>
void replace(Pointer* variable, Pointer value, Free&& free) {
  Pointer old = std::exchange(*variable, value);
  if (old) free(old);
}

void replace_array(SAFEARRAY** variable, SAFEARRAY* value) {
  constexpr std::int32_t array_is_in_use = 10;
  SAFEARRAY* old = *variable;
  if (old && ((old->fFeatures & FADF_FIXEDSIZE) || FAILED(SafeArrayDestroy(old)))) {
    SafeArrayDestroy(value);
    raise(array_is_in_use);
  }
  *variable = value;
}

void write_array(const Variant& value, VARTYPE element, SAFEARRAY** variable) {
  if (element == VT_UI1 && value.is(VariantType::Bytes)) {
    replace_array(variable, new_byte_array(value.get<Bytes>()));
  } else if (element == VT_VARIANT) {
    replace_array(variable, new_array(value.get<Variant::Array>()));
  } else {
    raise(error_number::type_mismatch);
  }
}

/// A type that the conversions of this system do not know: left to the platform.
void write_converted(const Variant& value, const VARIANT& reference) {
  constexpr LCID brazilian =
      MAKELCID(MAKELANGID(LANG_PORTUGUESE, SUBLANG_PORTUGUESE_BRAZILIAN), SORT_DEFAULT);
  const auto type = static_cast<VARTYPE>(reference.vt & VT_TYPEMASK);
  OwnedVariant source;
  OwnedVariant converted;
  to_variant(value, source.get());
  const HRESULT code = VariantChangeTypeEx(&converted.get(), &source.get(), brazilian, 0, type);
  if (FAILED(code)) raise(number_of(code));
  switch (type) {
    case VT_I1:
    case VT_UI1:
      *reference.pbVal = converted.get().bVal;
      break;
    case VT_UI2:
      *reference.puiVal = converted.get().uiVal;
      break;
    case VT_UI4:
    case VT_UINT:
    case VT_INT:
    case VT_R4:
      *reference.pulVal = converted.get().ulVal;
      break;
    case VT_UI8:
    case VT_CY:
      *reference.pullVal = converted.get().ullVal;
      break;
    case VT_DECIMAL:
      *reference.pdecVal = converted.get().decVal;
      break;
    default:
      raise(error_number::type_mismatch);
  }
}

}  // namespace

void to_variant(const Variant& value, VARIANT& target) {
  VariantInit(&target);
  switch (value.type()) {
    case VariantType::Empty:
      return;
    case VariantType::Null:
      target.vt = VT_NULL;
      return;
    case VariantType::Missing:
      target.scode = DISP_E_PARAMNOTFOUND;
      target.vt = VT_ERROR;
      return;
    case VariantType::Boolean:
      target.boolVal = value.get<bool>() ? VARIANT_TRUE : VARIANT_FALSE;
      target.vt = VT_BOOL;
      return;
    case VariantType::UInt8:
      target.bVal = value.get<std::uint8_t>();
      target.vt = VT_UI1;
      return;
    case VariantType::Int16:
      target.iVal = value.get<std::int16_t>();
      target.vt = VT_I2;
      return;
    case VariantType::Int32:
      target.lVal = value.get<std::int32_t>();
      target.vt = VT_I4;
      return;
    case VariantType::Int64:
      target.decVal = decimal_of(value.get<std::int64_t>());
      target.vt = VT_DECIMAL;
      return;
    case VariantType::Double:
      target.dblVal = value.get<double>();
      target.vt = VT_R8;
      return;
    case VariantType::Date:
      target.date = value.get<Date>().serial;
      target.vt = VT_DATE;
      return;
    case VariantType::Text:
      target.bstrVal = new_bstr(value.get<std::string>());
      target.vt = VT_BSTR;
      return;
    case VariantType::Bytes:
      target.parray = new_byte_array(value.get<Bytes>());
      target.vt = VT_ARRAY | VT_UI1;
      return;
    case VariantType::Array:
      target.parray = new_array(value.get<Variant::Array>());
      target.vt = VT_ARRAY | VT_VARIANT;
      return;
    case VariantType::Object:
      target.pdispVal = dispatch_of(value.get<ObjectPtr>());
      target.vt = VT_DISPATCH;
      return;
  }
}

void matrix_to_variant(const Variant& columns, VARIANT& target) {
  VariantInit(&target);
  target.parray = new_matrix(columns.get<Variant::Array>());
  target.vt = VT_ARRAY | VT_VARIANT;
}

void write_back(const Variant& value, const VARIANT& reference) {
  if (!(reference.vt & VT_BYREF)) return;
  const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  if (type & VT_ARRAY) return write_array(value, type & VT_TYPEMASK, reference.pparray);
  switch (type) {
    case VT_VARIANT: {
      VARIANT& variable = *reference.pvarVal;
      if (variable.vt & VT_BYREF) return write_back(value, variable);
      OwnedVariant fresh;
      to_variant(value, fresh.get());
      VariantClear(&variable);
      fresh.release_to(variable);
      return;
    }
    case VT_BOOL:
      *reference.pboolVal = to_boolean(value) ? VARIANT_TRUE : VARIANT_FALSE;
      return;
    case VT_I2:
      *reference.piVal = to_int16(value);
      return;
    case VT_I4:
      *reference.plVal = to_int32(value);
      return;
    case VT_I8:
      *reference.pllVal = to_int64(value);
      return;
    case VT_R8:
      *reference.pdblVal = to_double(value);
      return;
    case VT_DATE:
      *reference.pdate = to_date(value).serial;
      return;
    case VT_BSTR:
      replace(reference.pbstrVal, new_bstr(to_text(value)), SysFreeString);
      return;
    case VT_DISPATCH:
      replace(reference.ppdispVal, dispatch_of(value.get<ObjectPtr>()),
              [](IDispatch* old) { old->Release(); });
      return;
    default:
      write_converted(value, reference);
  }
}

}  // namespace pradelis::com
