#include "automation/invoke.h"

#include "automation/call_frame.h"
#include "automation/classes.h"
#include "values/error.h"

namespace pradelis::automation {
namespace {

/// The object that `value` refers to, for going on with it.
ObjectPtr target_of(const Variant& value) {
  if (!value.is(VariantType::Object)) raise(error_number::wrong_number_of_arguments);
  const ObjectPtr& object = value.get<ObjectPtr>();
  if (!object) raise(error_number::object_not_set);
  return object;
}

/// Whether this use of a property goes on to the object that it gives: there are more arguments than
/// reading it takes, or it cannot be assigned itself.
bool leads_on(const Member* reader, const Member* member, std::size_t index_arguments) {
  if (!reader || reader->kind != MemberKind::Get || index_arguments == 0) return false;
  if (reader->result != ValueType::Object && reader->result != ValueType::Variant) return false;
  const std::size_t own = reader->parameters.size();
  return member ? index_arguments > own : index_arguments >= own;
}

/// Reads `member` with the first arguments, and uses the default member of what it gives with the rest.
Variant lead_on(Object& object, const Member& member, Use use, Arguments arguments) {
  const std::size_t own = member.parameters.size();
  const Variant value = CallFrame(member, {arguments.positional.first(own), {}}).call(object);
  const ObjectPtr target = target_of(value);
  return invoke(*target, ClassTable::default_member, use,
                {arguments.positional.subspan(own), arguments.named});
}

}  // namespace

Variant invoke(Object& object, std::int32_t id, Use use, Arguments arguments) {
  const ClassTable& table = table_of(object);
  const Member* member = table.find(id, use);
  const Member* reader = table.find(id, Use::Read);
  const std::size_t new_values = use == Use::Read ? 0 : 1;
  const std::size_t given = arguments.positional.size();
  if (given >= new_values && leads_on(reader, member, given - new_values)) {
    return lead_on(object, *reader, use, arguments);
  }
  if (!member) raise(error_number::no_such_member);
  return CallFrame(*member, arguments).call(object);
}

Variant invoke(Object& object, std::string_view name, Use use, Arguments arguments) {
  const auto id = table_of(object).id_of(name);
  if (!id) raise(error_number::no_such_member);
  return invoke(object, *id, use, arguments);
}

Variant default_value(const Variant& value) {
  if (!value.is(VariantType::Object) || !value.get<ObjectPtr>()) return value;
  Object& object = *value.get<ObjectPtr>();
  const ClassTable* table = find_table(object);
  const Member* member = table ? table->find(ClassTable::default_member, Use::Read) : nullptr;
  if (!member || !member->parameters.empty() || member->result == ValueType::Object) return value;
  return CallFrame(*member, {}).call(object);
}

}  // namespace pradelis::automation
