#include "com/function_tables.h"

#include <cstddef>
#include <utility>

#include "automation/classes.h"
#include "com/com_object.h"

// The interfaces as structures of function pointers: those are filled below, row by row.
#define CINTERFACE
#include "pradelis_interfaces.h"
#undef CINTERFACE

namespace pradelis::com {
namespace {

template <class Self>
ComObject& object_of(Self* self) {
  return *reinterpret_cast<ComObject*>(self);
}

/// The seven functions with which every table begins.
template <class Self>
struct Common {
  static HRESULT STDMETHODCALLTYPE query_interface(Self* self, REFIID interface_id, void** result) {
    return object_of(self).query_interface(interface_id, result);
  }
  static ULONG STDMETHODCALLTYPE add_reference(Self* self) { return object_of(self).add_reference(); }
  static ULONG STDMETHODCALLTYPE release(Self* self) { return object_of(self).release(); }
  static HRESULT STDMETHODCALLTYPE type_info_count(Self* self, UINT* count) {
    return object_of(self).type_info_count(count);
  }
  static HRESULT STDMETHODCALLTYPE type_info(Self* self, UINT index, LCID, ITypeInfo** result) {
    return object_of(self).type_info(index, result);
  }
  static HRESULT STDMETHODCALLTYPE ids_of_names(Self* self, REFIID, LPOLESTR* names, UINT count, LCID,
                                                DISPID* ids) {
    return object_of(self).ids_of_names(names, count, ids);
  }
  static HRESULT STDMETHODCALLTYPE invoke(Self* self, DISPID member, REFIID, LCID, WORD flags,
                                          DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                          UINT*) {
    return object_of(self).invoke(member, flags, parameters, result, exception);
  }
};
constexpr std::size_t common_count = 7;

/// Where the value of an argument lies: at the address that the caller gives for one by reference (and
/// for the result), in the argument itself otherwise.
template <class T>
void* place_of(T& value) {
  return &value;
}
template <class T>
void* place_of(T*& reference) {
  return reference;
}
void* place_of(BSTR& text) { return &text; }
void* place_of(IDispatch*& object) { return &object; }

template <std::size_t row, class Self, class... Arguments>
HRESULT STDMETHODCALLTYPE slot(Self* self, Arguments... arguments) {
  void* const places[] = {place_of(arguments)..., nullptr};
  return object_of(self).call_slot(row, {places, sizeof...(Arguments)});
}

template <class Self, class... Arguments>
using SlotPointer = HRESULT(STDMETHODCALLTYPE*)(Self*, Arguments...);

/// Turns into a pointer to the function for a row, with whatever arguments the interface gives it there.
template <std::size_t row>
struct Slot {
  template <class Self, class... Arguments>
  operator SlotPointer<Self, Arguments...>() const {
    return &slot<row, Self, Arguments...>;
  }
};

template <class Table, class Self, std::size_t... row>
constexpr Table filled(std::index_sequence<row...>) {
  using Function = Common<Self>;
  return {
      &Function::query_interface, &Function::add_reference, &Function::release, &Function::type_info_count,
      &Function::type_info,       &Function::ids_of_names,  &Function::invoke,  Slot<row>{}...};
}

template <class Table, class Self>
const void* table_for() {
  constexpr std::size_t rows = sizeof(Table) / sizeof(void*) - common_count;
  static const Table table = filled<Table, Self>(std::make_index_sequence<rows>());
  return &table;
}

/// Table of an object that is called by name only.
struct ByName;
struct ByNameTable {
  HRESULT(STDMETHODCALLTYPE* query_interface)(ByName*, REFIID, void**);
  ULONG(STDMETHODCALLTYPE* add_reference)(ByName*);
  ULONG(STDMETHODCALLTYPE* release)(ByName*);
  HRESULT(STDMETHODCALLTYPE* type_info_count)(ByName*, UINT*);
  HRESULT(STDMETHODCALLTYPE* type_info)(ByName*, UINT, LCID, ITypeInfo**);
  HRESULT(STDMETHODCALLTYPE* ids_of_names)(ByName*, REFIID, LPOLESTR*, UINT, LCID, DISPID*);
  HRESULT(STDMETHODCALLTYPE* invoke)
  (ByName*, DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*);
};

}  // namespace

const void* function_table(const automation::ClassTable& table) {
  if (&table == &automation::crm_table()) return table_for<_CRMVtbl, _CRM>();
  if (&table == &automation::pessoa_juridica_table())
    return table_for<_PessoaJuridicaVtbl, _PessoaJuridica>();
  if (&table == &automation::vendedor_table()) return table_for<_VendedorVtbl, _Vendedor>();
  if (&table == &automation::grupo_usuarios_table()) return table_for<_GrupoUsuariosVtbl, _GrupoUsuarios>();
  return table_for<ByNameTable, ByName>();
}

}  // namespace pradelis::com
