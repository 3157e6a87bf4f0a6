#include "automation/classes.h"

#include <array>
#include <typeindex>
#include <unordered_map>

#include "values/error.h"

namespace pradelis::automation {
namespace {

const ClassTable* look_up(const Object& object) {
  for (const ClassTable* table : all_tables()) {
    if (table->is_instance(object)) return table;
  }
  return nullptr;
}

}  // namespace

std::span<const ClassTable* const> all_tables() {
  static const std::array tables = {
      &crm_table(),       &pessoa_juridica_table(), &vendedor_table(), &grupo_usuarios_table(),
      &recordset_table(), &fields_table(),          &field_table(),    &connection_table(),
      &qlcconn_table(),   &qlcbase_table(),         &qlcdata_table(),
  };
  return tables;
}

const ClassTable* find_table(const Object& object) {
  thread_local std::unordered_map<std::type_index, const ClassTable*> known;
  const auto [entry, is_new] = known.try_emplace(typeid(object), nullptr);
  if (is_new) entry->second = look_up(object);
  return entry->second;
}

const ClassTable& table_of(const Object& object) {
  if (const ClassTable* table = find_table(object)) return *table;
  raise(error_number::no_such_member);
}

}  // namespace pradelis::automation
