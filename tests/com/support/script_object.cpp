#include "tests/com/support/script_object.h"

namespace pradelis::test {
namespace {

constexpr LCID brazilian = 0x0416;

/// Follows a reference to a variable, and an object's default member.
HRESULT plain_value(const VARIANT& value, VARIANT& plain) {
  if (const HRESULT code = copy_value(plain, value); FAILED(code)) return code;
  while (plain.vt == VT_DISPATCH && plain.pdispVal) {
    com::OwnedVariant object;
    object.get() = plain;
    VariantInit(&plain);
    DISPPARAMS none{};
    const HRESULT code = object.get().pdispVal->Invoke(DISPID_VALUE, IID_NULL, brazilian,
                                                       DISPATCH_PROPERTYGET, &none, &plain, nullptr, nullptr);
    if (FAILED(code)) return code;
  }
  return S_OK;
}

}  // namespace

void ScriptObject::add(std::wstring name, Member member) {
  members_.push_back({std::move(name), std::move(member)});
}

HRESULT ScriptObject::QueryInterface(REFIID interface_id, void** result) {
  *result = nullptr;
  if (!IsEqualIID(interface_id, IID_IUnknown) && !IsEqualIID(interface_id, IID_IDispatch))
    return E_NOINTERFACE;
  *result = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

ULONG ScriptObject::AddRef() { return ++references_; }

ULONG ScriptObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ScriptObject::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

HRESULT ScriptObject::GetTypeInfo(UINT, LCID, ITypeInfo**) { return DISP_E_BADINDEX; }

HRESULT ScriptObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
  for (std::size_t i = 0; i < members_.size(); ++i) {
    if (!same_name(members_[i].name, names[0])) continue;
    ids[0] = static_cast<DISPID>(i);
    return S_OK;
  }
  ids[0] = DISPID_UNKNOWN;
  return DISP_E_UNKNOWNNAME;
}

HRESULT ScriptObject::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                             EXCEPINFO*, UINT*) {
  if (member < 0 || static_cast<std::size_t>(member) >= members_.size()) return DISP_E_MEMBERNOTFOUND;
  com::OwnedVariant unwanted;
  ScriptCall call{flags, {}, result ? result : &unwanted.get()};
  for (UINT i = parameters->cArgs; i > 0; --i) call.arguments.push_back(&parameters->rgvarg[i - 1]);
  return members_[static_cast<std::size_t>(member)].function(call);
}

bool is_change(const ScriptCall& call) {
  return (call.flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

std::wstring text_of(const VARIANT& value) {
  com::OwnedVariant plain;
  com::OwnedVariant text;
  if (FAILED(plain_value(value, plain.get())) || plain.get().vt == VT_NULL) return {};
  if (FAILED(VariantChangeTypeEx(&text.get(), &plain.get(), brazilian, VARIANT_LOCALBOOL, VT_BSTR)))
    return {};
  return {text.get().bstrVal, SysStringLen(text.get().bstrVal)};
}

HRESULT copy_value(VARIANT& target, const VARIANT& source) {
  return VariantCopyInd(&target, const_cast<VARIANT*>(&source));  // which only reads it
}

HRESULT give(const ScriptCall& call, std::wstring_view text) {
  call.result->bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  call.result->vt = VT_BSTR;
  return S_OK;
}

HRESULT give(const ScriptCall& call, long number) {
  call.result->lVal = number;
  call.result->vt = VT_I4;
  return S_OK;
}

HRESULT give(const ScriptCall& call, IDispatch* object) {
  if (object) object->AddRef();
  call.result->pdispVal = object;
  call.result->vt = VT_DISPATCH;
  return S_OK;
}

HRESULT give(const ScriptCall& call, const VARIANT& value) { return copy_value(*call.result, value); }

bool same_name(std::wstring_view left, std::wstring_view right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                              static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace pradelis::test
