#include "com/foreign_object.h"

#include <vector>

#include "com/error_info.h"
#include "com/owned_variant.h"
#include "com/text.h"
#include "com/variant_in.h"
#include "values/error.h"

namespace pradelis::com {

DISPID ForeignObject::id_of(const wchar_t* name) const {
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR writable = const_cast<LPOLESTR>(name);  // the interface takes names so, and leaves them alone
  const HRESULT code = dispatch_->GetIDsOfNames(IID_NULL, &writable, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(code)) raise(error_number::no_such_member);
  return id;
}

Variant ForeignObject::read(DISPID member, std::initializer_list<std::string_view> arguments) const {
  std::vector<OwnedVariant> values(arguments.size());
  std::vector<VARIANTARG> reversed(arguments.size());
  std::size_t place = arguments.size();
  for (const std::string_view argument : arguments) {
    VARIANT& value = values[--place].get();
    value.bstrVal = new_bstr(argument);
    value.vt = VT_BSTR;
    reversed[place] = value;
  }
  DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
  OwnedVariant result;
  EXCEPINFO exception{};
  const HRESULT code =
      dispatch_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                        &parameters, &result.get(), &exception, nullptr);
  if (FAILED(code)) throw error_of(code, exception);
  return from_variant(result.get());
}

}  // namespace pradelis::com
