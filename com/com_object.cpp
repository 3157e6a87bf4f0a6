#include "com/com_object.h"

#include <type_traits>

#include "com/apartment.h"
#include "com/call_by_name.h"
#include "com/call_slot.h"
#include "com/error_info.h"
#include "com/guid.h"
#include "com/tear_offs.h"
#include "com/type_library.h"

namespace pradelis::com {
namespace {

static_assert(std::is_standard_layout_v<ComObject>, "callers find the table of functions in its first place");

/// Only objects of this library know it.
constexpr GUID own_object_id = guid_of("62DAFF19-4A2B-486E-B21C-B182BA5A2A59");

}  // namespace

ComObject::ComObject(const void* functions, ObjectPtr object, const automation::ClassTable& table,
                     const ClassIdentifiers* identifiers)
    : functions_(functions),
      object_(std::move(object)),
      table_(&table),
      identifiers_(identifiers),
      interface_id_(identifiers ? guid_of(identifiers->interface_id) : IID_IDispatch) {
  apartment().object_created(*this);
}

ComObject::~ComObject() {
  Apartment& home = apartment();
  home.object_ends(*this);
  object_.reset();
  home.object_ended();
}

HRESULT ComObject::query_interface(REFIID interface_id, void** result) noexcept {
  if (!result) return E_POINTER;
  *result = nullptr;
  const bool is_own = IsEqualIID(interface_id, IID_IUnknown) || IsEqualIID(interface_id, IID_IDispatch) ||
                      IsEqualIID(interface_id, interface_id_) || IsEqualIID(interface_id, own_object_id);
  if (!is_own) return query_tear_off(*this, interface_id, result);
  *result = this;
  add_reference();
  return S_OK;
}

ULONG ComObject::add_reference() noexcept { return ++references_; }

ULONG ComObject::release() noexcept {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ComObject::type_info_count(UINT* count) noexcept {
  if (!count) return E_POINTER;
  *count = identifiers_ ? 1 : 0;
  return S_OK;
}

HRESULT ComObject::type_info(UINT index, ITypeInfo** result) noexcept {
  if (!result) return E_POINTER;
  *result = nullptr;
  if (index != 0 || !identifiers_) return DISP_E_BADINDEX;
  return find_type_info(interface_id_, result);
}

HRESULT ComObject::ids_of_names(LPOLESTR* names, UINT count, DISPID* ids) noexcept {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  return guarded([&] { return find_ids(*table_, {names, count}, ids); });
}

HRESULT ComObject::invoke(DISPID member, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                          EXCEPINFO* exception) noexcept {
  if (!parameters) return E_INVALIDARG;
  add_reference();  // the call may let go of the caller's own reference
  HRESULT code = S_OK;
  try {
    code = call_by_name(*this, member, flags, *parameters, result);
  } catch (...) {
    code = guarded([&] { return fill_exception(current_error(), exception); });
  }
  release();
  return code;
}

HRESULT ComObject::call_slot(std::size_t row, std::span<void* const> places) noexcept {
  add_reference();
  const GUID interface_id = interface_id_;
  HRESULT code = S_OK;
  try {
    code = com::call_slot(*object_, table_->members()[row], places);
  } catch (...) {
    code = guarded([&] { return leave_error_info(current_error(), interface_id); });
  }
  release();
  return code;
}

ComObject* own_object(IUnknown& reference) noexcept {
  void* result = nullptr;
  if (FAILED(reference.QueryInterface(own_object_id, &result))) return nullptr;
  return static_cast<ComObject*>(result);
}

}  // namespace pradelis::com
