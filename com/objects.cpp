#include "com/objects.h"

#include "automation/classes.h"
#include "com/apartment.h"
#include "com/com_object.h"
#include "com/foreign_object.h"
#include "com/function_tables.h"
#include "com/reference.h"
#include "values/error.h"

namespace pradelis::com {
namespace {

const ClassIdentifiers* identifiers_of(const automation::ClassTable& table) {
  for (const ClassIdentifiers& identifiers : class_identifiers) {
    if (identifiers.class_name == table.name()) return &identifiers;
  }
  return nullptr;
}

}  // namespace

IDispatch* dispatch_of(const ObjectPtr& object) {
  if (!object) return nullptr;
  if (const auto* foreign = dynamic_cast<const ForeignObject*>(object.get())) {
    foreign->dispatch()->AddRef();
    return foreign->dispatch();
  }
  if (ComObject* known = apartment().find(*object)) {
    known->add_reference();
    return known->dispatch();
  }
  const automation::ClassTable& table = automation::table_of(*object);
  return (new ComObject(function_table(table), object, table, identifiers_of(table)))->dispatch();
}

ObjectPtr object_from(IUnknown* reference) {
  if (!reference) return nullptr;
  if (ComObject* own = own_object(*reference)) {
    ObjectPtr object = own->object();
    own->release();
    return object;
  }
  Reference<IDispatch> dispatch;
  if (FAILED(reference->QueryInterface(IID_IDispatch, dispatch.untyped_receiver()))) {
    raise(error_number::type_mismatch);
  }
  return std::make_shared<ForeignObject>(std::move(dispatch));
}

}  // namespace pradelis::com
