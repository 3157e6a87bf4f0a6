#include "tests/com/support/page_objects.h"

// A library that is the application server for a program that knows nothing of pages: a script fills the
// Application through it, and reads what was written to the Response.

namespace {

pradelis::test::PageObjects& page() {
  static pradelis::test::PageObjects objects;
  return objects;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, LPVOID* result) {
  CLSID served;
  if (FAILED(CLSIDFromString(pradelis::test::app_server_class, &served)) || !IsEqualCLSID(class_id, served)) {
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  return pradelis::test::app_server_factory([] { return new pradelis::test::AppServer(page()); })
      .QueryInterface(interface_id, result);
}

STDAPI DllCanUnloadNow() { return S_FALSE; }
