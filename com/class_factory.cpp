#include "com/class_factory.h"

#include "com/apartment.h"
#include "com/error_info.h"
#include "com/guid.h"
#include "com/identifiers.h"
#include "com/objects.h"
#include "com/reference.h"
#include "component/registry.h"

namespace pradelis::com {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ClassIdentifiers& identifiers) : identifiers_(identifiers) { lock_library(); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (!IsEqualIID(interface_id, IID_IUnknown) && !IsEqualIID(interface_id, IID_IClassFactory)) {
      return E_NOINTERFACE;
    }
    *result = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  // The platform may keep a factory for threads of its choice: these two alone are counted for all.
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interface_id, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      return create(interface_id, result);
    } catch (...) {
      return guarded([&] { return leave_error_info(current_error(), guid_of(identifiers_.interface_id)); });
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    if (lock) {
      lock_library();
    } else {
      unlock_library();
    }
    return S_OK;
  }

 private:
  ~ClassFactory() { unlock_library(); }

  HRESULT create(REFIID interface_id, void** result) {
    const Apartment::Use use(apartment());
    Reference<IDispatch> created;
    *created.receiver() = dispatch_of(component::create_object(identifiers_.program_identifier));
    return created->QueryInterface(interface_id, result);
  }

  LONG references_ = 1;
  const ClassIdentifiers& identifiers_;
};

}  // namespace

HRESULT class_factory(REFCLSID class_id, REFIID interface_id, void** result) noexcept {
  if (!result) return E_POINTER;
  *result = nullptr;
  for (const ClassIdentifiers& identifiers : class_identifiers) {
    if (!IsEqualCLSID(class_id, guid_of(identifiers.class_id))) continue;
    return guarded([&] {
      Reference<IClassFactory> factory;
      *factory.receiver() = new ClassFactory(identifiers);
      return factory->QueryInterface(interface_id, result);
    });
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

}  // namespace pradelis::com
