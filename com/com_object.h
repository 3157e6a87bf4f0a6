#pragma once

#include <cstddef>
#include <span>

#include "automation/class_table.h"
#include "com/identifiers.h"
#include "com/platform.h"
#include "values/object.h"

namespace pradelis::com {

/// One object of the component as callers of the platform hold it. What they hold is the address of its
/// table of functions: the seven of a call by name, and for the four classes behind them one function
/// for each row of the class's table.
///
/// An object belongs to the thread that created it, so nothing in it is locked.
class ComObject {
 public:
  /// A new object with one reference. `functions` outlives it.
  ComObject(const void* functions, ObjectPtr object, const automation::ClassTable& table,
            const ClassIdentifiers* identifiers);
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  const ObjectPtr& object() const noexcept { return object_; }
  const automation::ClassTable& table() const noexcept { return *table_; }
  /// Null for objects that are called by name only.
  const ClassIdentifiers* identifiers() const noexcept { return identifiers_; }
  /// The interface under which failures of the object are reported.
  const GUID& interface_id() const noexcept { return interface_id_; }
  IDispatch* dispatch() noexcept { return reinterpret_cast<IDispatch*>(this); }

  HRESULT query_interface(REFIID interface_id, void** result) noexcept;
  ULONG add_reference() noexcept;
  ULONG release() noexcept;

  HRESULT type_info_count(UINT* count) noexcept;
  HRESULT type_info(UINT index, ITypeInfo** result) noexcept;
  HRESULT ids_of_names(LPOLESTR* names, UINT count, DISPID* ids) noexcept;
  HRESULT invoke(DISPID member, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                 EXCEPINFO* exception) noexcept;

  /// Calls the function of a row of the class's table. `places` leads to the value of each argument, and
  /// last to the place for the result where there is one.
  HRESULT call_slot(std::size_t row, std::span<void* const> places) noexcept;

 private:
  ~ComObject();

  const void* functions_;  // first: callers take the object's address for that of this pointer
  ULONG references_ = 1;
  ObjectPtr object_;
  const automation::ClassTable* table_;
  const ClassIdentifiers* identifiers_;
  GUID interface_id_;
};

/// The component's own object behind a reference, with a reference more; null for somebody else's.
ComObject* own_object(IUnknown& reference) noexcept;

}  // namespace pradelis::com
