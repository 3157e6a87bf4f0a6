#include "com/apartment.h"
#include "com/class_factory.h"
#include "com/platform.h"
#include "com/registration.h"

// The functions by which the platform knows a library of classes. `pradelis.def` exports them.

STDAPI DllGetClassObject(REFCLSID class_id, REFIID interface_id, LPVOID* result) {
  return pradelis::com::class_factory(class_id, interface_id, result);
}

STDAPI DllCanUnloadNow() { return pradelis::com::library_can_unload() ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() { return pradelis::com::register_library(); }

STDAPI DllUnregisterServer() { return pradelis::com::unregister_library(); }

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
  if (reason == DLL_THREAD_DETACH) pradelis::com::thread_ends();
  return TRUE;
}
