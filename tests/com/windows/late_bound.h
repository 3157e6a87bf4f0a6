#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "com/platform.h"
#include "tests/com/windows/platform_values.h"

namespace pradelis::test {

/// Calls a member by name, as scripts do; `arguments` in their order. Gives the code of the call, or of what
/// was raised.
inline HRESULT late_bound(IDispatch* object, const wchar_t* name, WORD flags,
                          std::initializer_list<VARIANT> arguments, VARIANT* result) {
  if (!object) return E_POINTER;
  auto writable = const_cast<LPOLESTR>(name);  // the interface takes names so, and leaves them alone
  DISPID id = DISPID_VALUE;
  if (*name) {
    const HRESULT found = object->GetIDsOfNames(IID_NULL, &writable, 1, 0, &id);
    if (FAILED(found)) return found;
  }
  std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  EXCEPINFO exception{};
  const HRESULT code = object->Invoke(id, IID_NULL, 0, flags, &parameters, result, &exception, nullptr);
  SysFreeString(exception.bstrSource);
  SysFreeString(exception.bstrDescription);
  return code == DISP_E_EXCEPTION ? exception.scode : code;
}

/// What a property or method gives; an empty name asks for the default member.
inline HRESULT read(IDispatch* object, const wchar_t* name, std::initializer_list<VARIANT> arguments,
                    VARIANT* result) {
  return late_bound(object, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, result);
}

}  // namespace pradelis::test
