#include "com/call_by_name.h"

#include <string>
#include <vector>

#include "automation/invoke.h"
#include "com/enumeration.h"
#include "com/text.h"
#include "com/variant_in.h"
#include "com/variant_out.h"
#include "values/error.h"

namespace pradelis::com {
namespace {

using automation::ClassTable;
using automation::Member;
using automation::Use;
using automation::ValueType;

/// How `flags` use a member. A caller that cannot tell values from references asks for both; he gets
/// what the member has.
Use use_of(const ClassTable& table, DISPID member, WORD flags) {
  if (flags & DISPATCH_PROPERTYPUTREF) {
    const bool may_be_value = flags & DISPATCH_PROPERTYPUT;
    return may_be_value && !table.find(member, Use::Set) ? Use::Let : Use::Set;
  }
  return flags & DISPATCH_PROPERTYPUT ? Use::Let : Use::Read;
}

/// The arguments of one call, in the order of the parameters. The platform lists them from the last to
/// the first, those given by name before the others, and a property's new value as the first of all.
class CallArguments {
 public:
  CallArguments(const Member* member, Use use, const DISPPARAMS& given) : member_(member), use_(use) {
    const UINT new_values = use == Use::Read ? 0 : 1;
    const UINT named = given.cNamedArgs;
    if (given.cArgs < new_values || given.cArgs < named) raise(error_number::wrong_number_of_arguments);
    const UINT first_named = named > 0 && given.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT ? 1 : 0;
    const UINT behind = named > new_values ? named : new_values;
    values_.reserve(given.cArgs);
    references_.reserve(given.cArgs);

    for (UINT i = given.cArgs; i > behind; --i) add(given.rgvarg[i - 1], position());
    if (new_values) add(given.rgvarg[0], new_value_position());
    positional_ = values_.size();
    for (UINT i = new_values ? 1 : first_named; i < named; ++i) {
      add_named(given.rgvarg[i], given.rgdispidNamedArgs[i]);
    }
  }

  automation::Arguments view() { return {std::span(values_).first(positional_), named_}; }

  /// Gives the caller's variables what the method wrote.
  void write_back() {
    if (!member_) return;
    for (std::size_t i = 0; i < values_.size(); ++i) {
      const std::size_t parameter = parameters_[i];
      if (parameter < member_->parameters.size() && member_->parameters[parameter].written_back) {
        com::write_back(values_[i], *references_[i]);
      }
    }
  }

 private:
  std::size_t position() const { return values_.size(); }
  std::size_t new_value_position() const { return member_ ? member_->parameters.size() - 1 : position(); }

  bool wants_object(std::size_t parameter) const {
    if (use_ == Use::Set) return true;
    return member_ && parameter < member_->parameters.size() &&
           member_->parameters[parameter].passed == ValueType::Object;
  }

  void add(const VARIANT& given, std::size_t parameter) {
    values_.push_back(wants_object(parameter) ? from_variant(given) : value_from_variant(given));
    references_.push_back(&given);
    parameters_.push_back(parameter);
  }

  void add_named(const VARIANT& given, DISPID parameter) {
    const auto index = static_cast<std::size_t>(parameter);
    if (!member_ || parameter < 0 || index >= member_->parameters.size()) {
      raise(error_number::named_argument_not_found);
    }
    add(given, index);
    named_.push_back({member_->parameters[index].name, &values_.back()});
  }

  const Member* member_;  ///< null when the arguments are for an object that a property leads to
  Use use_;
  std::vector<Variant> values_;  ///< never grows beyond what is reserved: named arguments point into it
  std::vector<const VARIANT*> references_;
  std::vector<std::size_t> parameters_;
  std::vector<automation::NamedArgument> named_;
  std::size_t positional_ = 0;
};

void give_result(const Member* member, const Variant& value, VARIANT* result) {
  if (!result) return;
  if (member && member->result == ValueType::Matrix) return matrix_to_variant(value, *result);
  to_variant(value, *result);
}

}  // namespace

HRESULT find_ids(const ClassTable& table, std::span<const LPOLESTR> names, DISPID* ids) {
  for (std::size_t i = 0; i < names.size(); ++i) ids[i] = DISPID_UNKNOWN;
  const auto member_id = table.id_of(to_utf8(names[0]));
  if (!member_id) return DISP_E_UNKNOWNNAME;
  ids[0] = *member_id;
  const Member* member = table.find(*member_id, Use::Read);
  HRESULT code = S_OK;
  for (std::size_t i = 1; i < names.size(); ++i) {
    const auto index = member ? automation::parameter_index(*member, to_utf8(names[i])) : std::nullopt;
    if (index) {
      ids[i] = static_cast<DISPID>(*index);
    } else {
      code = DISP_E_UNKNOWNNAME;
    }
  }
  return code;
}

HRESULT call_by_name(ComObject& target, DISPID id, WORD flags, const DISPPARAMS& parameters,
                     VARIANT* result) {
  const ClassTable& table = target.table();
  if (id == DISPID_NEWENUM && table.elements()) return enumerate(target, result);
  const Use use = use_of(table, id, flags);
  const Member* member = table.find(id, use);
  if (!member && !table.find(id, Use::Read)) return DISP_E_MEMBERNOTFOUND;

  CallArguments arguments(member, use, parameters);
  Variant value;
  try {
    value = automation::invoke(*target.object(), id, use, arguments.view());
  } catch (...) {
    arguments.write_back();  // how far a failed method got stands in its arguments
    throw;
  }
  arguments.write_back();
  give_result(member, value, result);
  return S_OK;
}

}  // namespace pradelis::com
