#include "com/tear_offs.h"

#include "com/error_info.h"
#include "com/guid.h"
#include "com/type_library.h"

namespace pradelis::com {
namespace {

/// A part of its owner's identity: it counts its own references and keeps the owner with one.
template <class Interface>
class TearOff : public Interface {
 public:
  explicit TearOff(ComObject& owner) : owner_(owner) { owner_.add_reference(); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    if (!result || !IsEqualIID(interface_id, __uuidof(Interface))) {
      return owner_.query_interface(interface_id, result);
    }
    *result = static_cast<Interface*>(this);
    this->AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~TearOff() { owner_.release(); }

  ComObject& owner_;

 private:
  ULONG references_ = 1;
};

class ErrorSupport final : public TearOff<ISupportErrorInfo> {
 public:
  using TearOff::TearOff;

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID interface_id) override {
    return IsEqualIID(interface_id, owner_.interface_id()) ? S_OK : S_FALSE;
  }
};

class ClassInfo final : public TearOff<IProvideClassInfo> {
 public:
  using TearOff::TearOff;

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    return find_type_info(guid_of(owner_.identifiers()->class_id), result);
  }
};

}  // namespace

HRESULT query_tear_off(ComObject& owner, REFIID interface_id, void** result) noexcept {
  return guarded([&] {
    if (IsEqualIID(interface_id, IID_ISupportErrorInfo)) {
      *result = static_cast<ISupportErrorInfo*>(new ErrorSupport(owner));
      return S_OK;
    }
    if (IsEqualIID(interface_id, IID_IProvideClassInfo) && owner.identifiers()) {
      *result = static_cast<IProvideClassInfo*>(new ClassInfo(owner));
      return S_OK;
    }
    return E_NOINTERFACE;
  });
}

}  // namespace pradelis::com
