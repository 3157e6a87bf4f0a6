#pragma once

#include <gtest/gtest.h>

#include "com/platform.h"
#include "com/reference.h"
#include "pradelis_interfaces.h"
#include "tests/com/support/page_objects.h"

namespace pradelis::test {

/// The page that the test program's first thread serves; every object of the component is created for it.
PageObjects& page();

/// A new object of one of the four classes, by its program identifier; empty when that failed.
template <class Interface>
com::Reference<Interface> create(const wchar_t* program_identifier, HRESULT* outcome = nullptr) {
  CLSID class_id;
  com::Reference<Interface> result;
  HRESULT code = CLSIDFromProgID(program_identifier, &class_id);
  if (SUCCEEDED(code)) {
    code = CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface),
                            result.untyped_receiver());
  }
  if (outcome) *outcome = code;
  return result;
}

inline com::Reference<_CRM> create_crm() { return create<_CRM>(L"Pradelis.CRM"); }

}  // namespace pradelis::test
