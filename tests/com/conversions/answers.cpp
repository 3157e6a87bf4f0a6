#include "tests/com/conversions/answers.h"

#include <cstdio>

#include "com/error_info.h"
#include "com/owned_variant.h"
#include "com/text.h"
#include "com/variant_in.h"
#include "com/variant_out.h"
#include "values/convert.h"

namespace pradelis::test {
namespace {

constexpr LCID brazilian = 0x0416;

/// All digits of a double; zero has no sign.
std::string exact(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.17g", value == 0 ? 0.0 : value);
  return text;
}

std::string shown(const Variant& value) {
  switch (value.type()) {
    case VariantType::Empty:
      return "Empty";
    case VariantType::Null:
      return "Null";
    case VariantType::Text:
      return '"' + value.get<std::string>() + '"';
    case VariantType::Double:
      return exact(value.get<double>());
    case VariantType::Date:
      return exact(value.get<Date>().serial);
    case VariantType::Boolean:
      return value.get<bool>() ? "True" : "False";
    default:
      return to_text(value);
  }
}

std::string error_text(std::int32_t number) { return "error " + std::to_string(number); }

Variant converted(const Input& input) {
  switch (input.target) {
    case Target::Boolean:
      return to_boolean(input.value);
    case Target::UInt8:
      return to_uint8(input.value);
    case Target::Int16:
      return to_int16(input.value);
    case Target::Int32:
      return to_int32(input.value);
    case Target::Int64:
      return to_int64(input.value);
    case Target::Double:
      return to_double(input.value);
    case Target::Date:
      return to_date(input.value);
    case Target::Formatted:
      return format_number(input.value.get<double>(), input.decimals, input.grouping);
    case Target::Text:
      break;
  }
  return to_text(input.value);
}

VARTYPE platform_type(Target target) {
  switch (target) {
    case Target::Boolean:
      return VT_BOOL;
    case Target::UInt8:
      return VT_UI1;
    case Target::Int16:
      return VT_I2;
    case Target::Int32:
      return VT_I4;
    case Target::Int64:
      return VT_I8;
    case Target::Double:
      return VT_R8;
    case Target::Date:
      return VT_DATE;
    default:
      return VT_BSTR;
  }
}

/// The value as the platform has it. 64-bit integers are given as such here, not as the decimals that scripts
/// get.
void give(const Variant& value, VARIANT& target) {
  if (value.is(VariantType::Int64)) {
    target.llVal = value.get<std::int64_t>();
    target.vt = VT_I8;
  } else {
    com::to_variant(value, target);
  }
}

HRESULT format(const Input& input, VARIANT& value, VARIANT& result) {
  constexpr int yes = -1;
  constexpr int no = 0;
  const HRESULT code =
      VarFormatNumber(&value, input.decimals, yes, no, input.grouping ? yes : no, 0, &result.bstrVal);
  if (SUCCEEDED(code)) result.vt = VT_BSTR;
  return code;
}

}  // namespace

std::string own_answer(const Input& input) {
  try {
    return shown(converted(input));
  } catch (const Error& error) {
    return error_text(error.number());
  }
}

std::string platform_answer(const Input& input) {
  com::OwnedVariant value;
  com::OwnedVariant result;
  give(input.value, value.get());
  const HRESULT code = input.target == Target::Formatted
                           ? format(input, value.get(), result.get())
                           : VariantChangeTypeEx(&result.get(), &value.get(), brazilian, VARIANT_LOCALBOOL,
                                                 platform_type(input.target));
  if (FAILED(code)) return error_text(com::number_of(code));
  return shown(com::from_variant(result.get()));
}

std::string text_of(const Input& input) {
  static constexpr const char* names[] = {"Boolean", "UInt8", "Int16", "Int32",    "Int64",
                                          "Double",  "Date",  "Text",  "Formatted"};
  std::string text = names[static_cast<std::size_t>(input.target)];
  text += " of ";
  if (input.value.is(VariantType::Date)) text += "date ";
  text += shown(input.value);
  if (input.target == Target::Formatted) {
    text += " with " + std::to_string(input.decimals) + " decimals" + (input.grouping ? ", grouped" : "");
  }
  return text;
}

bool is_brazilian() { return GetUserDefaultLCID() == brazilian; }

}  // namespace pradelis::test
