#pragma once

#include <span>

#include "automation/class_table.h"

namespace pradelis::automation {

/// The four classes that pages create.
const ClassTable& crm_table();
const ClassTable& pessoa_juridica_table();
const ClassTable& vendedor_table();
const ClassTable& grupo_usuarios_table();

/// The objects that those hand out.
const ClassTable& recordset_table();
const ClassTable& fields_table();
const ClassTable& field_table();
const ClassTable& connection_table();
const ClassTable& qlcconn_table();
const ClassTable& qlcbase_table();
const ClassTable& qlcdata_table();

/// All of them, in this order.
std::span<const ClassTable* const> all_tables();

/// The table of an object's class; null when the class has none.
const ClassTable* find_table(const Object& object);
/// The same, but raises error 438 when there is none.
const ClassTable& table_of(const Object& object);

}  // namespace pradelis::automation
