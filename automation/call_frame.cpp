#include "automation/call_frame.h"

#include <utility>

#include "values/error.h"

namespace pradelis::automation {

CallFrame::CallFrame(const Member& member, const Arguments& arguments)
    : member_(member),
      arguments_(member.parameters.size()),
      temporaries_(member.parameters.size()),
      receivers_(member.parameters.size()) {
  if (arguments.positional.size() > arguments_.size()) raise(error_number::wrong_number_of_arguments);
  for (std::size_t i = 0; i < arguments.positional.size(); ++i) place(i, arguments.positional[i]);
  for (const NamedArgument& named : arguments.named) {
    const auto index = parameter_index(member, named.parameter);
    if (!index) raise(error_number::named_argument_not_found);
    if (arguments_[*index]) raise(error_number::wrong_number_of_arguments);
    place(*index, *named.value);
  }
  for (std::size_t i = 0; i < arguments_.size(); ++i) {
    if (!arguments_[i]) place_default(i);
  }
}

Variant CallFrame::call(Object& object) {
  struct WriteBack {
    CallFrame& frame;
    ~WriteBack() { frame.write_back(); }
  } const at_the_end{*this};
  return member_.invoke(object, arguments_);
}

void CallFrame::place(std::size_t index, Variant& given) {
  const Parameter& parameter = member_.parameters[index];
  if (given.is_missing() && (parameter.optional || parameter.passed != ValueType::Variant)) {
    place_default(index);
    return;
  }
  const bool object_for_value = given.is(VariantType::Object) && parameter.passed != ValueType::Object &&
                                member_.kind != MemberKind::Set;
  if (!object_for_value && holds(given.type(), parameter.passed)) {
    arguments_[index] = &given;
    return;
  }
  temporary(index, convert_to(parameter.passed, object_for_value ? default_value(given) : given));
  if (parameter.written_back) receivers_[index] = &given;
}

void CallFrame::place_default(std::size_t index) {
  const Parameter& parameter = member_.parameters[index];
  if (!parameter.optional) raise(error_number::argument_not_optional);
  temporary(index, parameter.default_value);
}

void CallFrame::temporary(std::size_t index, Variant value) {
  temporaries_[index] = std::move(value);
  arguments_[index] = &temporaries_[index];
}

void CallFrame::write_back() noexcept {
  for (std::size_t i = 0; i < receivers_.size(); ++i) {
    if (receivers_[i]) *receivers_[i] = std::move(temporaries_[i]);
  }
}

}  // namespace pradelis::automation
