#include "com/enumeration.h"

#include "com/apartment.h"
#include "com/error_info.h"
#include "com/reference.h"
#include "com/variant_out.h"

namespace pradelis::com {
namespace {

class Enumeration final : public IEnumVARIANT {
 public:
  Enumeration(ObjectPtr collection, const automation::Elements& elements, std::size_t next)
      : collection_(std::move(collection)), elements_(elements), next_(next) {
    lock_library();
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (!IsEqualIID(interface_id, IID_IUnknown) && !IsEqualIID(interface_id, IID_IEnumVARIANT)) {
      return E_NOINTERFACE;
    }
    *result = static_cast<IEnumVARIANT*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* values, ULONG* fetched) override {
    ULONG given = 0;
    const HRESULT code = guarded([&] {
      const std::size_t total = elements_.count(*collection_);
      for (; given < count && next_ < total; ++given, ++next_) {
        to_variant(elements_.at(*collection_, next_), values[given]);
      }
      return given == count ? S_OK : S_FALSE;
    });
    if (FAILED(code)) {
      while (given > 0) VariantClear(&values[--given]);
    }
    if (fetched) *fetched = given;
    return code;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
    return guarded([&] {
      const std::size_t left = elements_.count(*collection_) - next_;
      next_ += count < left ? count : left;
      return count <= left ? S_OK : S_FALSE;
    });
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    next_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    return guarded([&] {
      *result = new Enumeration(collection_, elements_, next_);
      return S_OK;
    });
  }

 private:
  ~Enumeration() { unlock_library(); }

  ULONG references_ = 1;
  ObjectPtr collection_;
  const automation::Elements& elements_;
  std::size_t next_;
};

}  // namespace

HRESULT enumerate(ComObject& collection, VARIANT* result) {
  if (!result) return S_OK;
  result->punkVal = new Enumeration(collection.object(), *collection.table().elements(), 0);
  result->vt = VT_UNKNOWN;
  return S_OK;
}

}  // namespace pradelis::com
