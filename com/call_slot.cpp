#include "com/call_slot.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "automation/invoke.h"
#include "com/objects.h"
#include "com/text.h"
#include "com/variant_in.h"
#include "com/variant_out.h"
#include "values/convert.h"
#include "values/error.h"

namespace pradelis::com {
namespace {

using automation::Member;
using automation::MemberKind;
using automation::Parameter;
using automation::Use;
using automation::ValueType;

Use use_of(MemberKind kind) {
  switch (kind) {
    case MemberKind::Let:
      return Use::Let;
    case MemberKind::Set:
      return Use::Set;
    case MemberKind::Method:
    case MemberKind::Get:
      break;
  }
  return Use::Read;
}

VARTYPE platform_type(ValueType type) {
  switch (type) {
    case ValueType::Boolean:
      return VT_BOOL;
    case ValueType::UInt8:
      return VT_UI1;
    case ValueType::Int16:
      return VT_I2;
    case ValueType::Int32:
      return VT_I4;
    case ValueType::Int64:
      return VT_I8;
    case ValueType::Double:
      return VT_R8;
    case ValueType::Date:
      return VT_DATE;
    case ValueType::Text:
      return VT_BSTR;
    case ValueType::Object:
      return VT_DISPATCH;
    case ValueType::Variant:
    case ValueType::Matrix:
    case ValueType::None:
      break;
  }
  return VT_VARIANT;
}

VARIANT reference_to(ValueType type, void* place) {
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = static_cast<VARTYPE>(platform_type(type) | VT_BYREF);
  reference.byref = place;
  return reference;
}

Variant argument(const Parameter& parameter, Use use, void* place) {
  const VARIANT reference = reference_to(parameter.type, place);
  const bool wants_object = use == Use::Set || parameter.passed == ValueType::Object;
  return wants_object ? from_variant(reference) : value_from_variant(reference);
}

void write_back(const Member& member, std::span<const Variant> arguments, std::span<void* const> places) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const Parameter& parameter = member.parameters[i];
    if (parameter.written_back) com::write_back(arguments[i], reference_to(parameter.type, places[i]));
  }
}

/// The place of a result holds nothing yet that could be freed.
void clear(ValueType type, void* place) {
  switch (type) {
    case ValueType::Text:
    case ValueType::Object:
      std::memset(place, 0, sizeof(void*));
      return;
    case ValueType::Variant:
    case ValueType::Matrix:
      VariantInit(static_cast<VARIANT*>(place));
      return;
    default:
      return;
  }
}

void give_result(ValueType type, const Variant& value, void* place) {
  if (type == ValueType::Matrix) return matrix_to_variant(value, *static_cast<VARIANT*>(place));
  com::write_back(value, reference_to(type, place));
}

}  // namespace

HRESULT call_slot(Object& object, const Member& member, std::span<void* const> places) {
  if (std::ranges::find(places, nullptr) != places.end()) return E_POINTER;
  const bool has_result = member.result != ValueType::None;
  if (has_result) clear(member.result, places.back());

  const Use use = use_of(member.kind);
  std::vector<Variant> arguments;
  arguments.reserve(member.parameters.size());
  for (std::size_t i = 0; i < member.parameters.size(); ++i) {
    arguments.push_back(argument(member.parameters[i], use, places[i]));
  }
  Variant value;
  try {
    value = automation::invoke(object, member.id, use, {arguments});
  } catch (...) {
    write_back(member, arguments, places);  // how far a failed method got stands in its arguments
    throw;
  }
  write_back(member, arguments, places);
  if (has_result) give_result(member.result, value, places.back());
  return S_OK;
}

}  // namespace pradelis::com
