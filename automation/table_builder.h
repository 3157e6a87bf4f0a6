#pragma once

#include <optional>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "automation/class_table.h"
#include "automation/signature.h"

/// The words in which the tables of the classes are written.
namespace pradelis::automation {

/// What a parameter's row adds to the C++ signature.
struct ParameterRow {
  std::string_view name;
  bool by_reference;
  bool optional = false;
  Variant default_value = Variant::missing();
  std::optional<ValueType> declared = {};
};

/// A required parameter, by value or by reference; with a default: an optional one.
inline ParameterRow val(std::string_view name) { return {name, false}; }
inline ParameterRow val(std::string_view name, Variant value) {
  return {name, false, true, std::move(value)};
}
inline ParameterRow ref(std::string_view name) { return {name, true}; }
inline ParameterRow ref(std::string_view name, Variant value) { return {name, true, true, std::move(value)}; }

/// The default of an optional variant without one.
inline Variant none() { return Variant::missing(); }

/// The same parameter, declared with another type than the method takes: the value is handed over as
/// the caller gives it.
inline ParameterRow declared(ValueType type, ParameterRow row) {
  row.declared = type;
  return row;
}

/// Builds the table of class `Class` row by row, in the order of the slots.
template <class Class>
class TableBuilder {
 public:
  /// A method. Its parameters are named in their order.
  template <auto function, class... Rows>
  TableBuilder& method(std::string_view name, Rows... rows) {
    return add<function>(name, MemberKind::Method, std::move(rows)...);
  }
  template <auto function, class... Rows>
  TableBuilder& get(std::string_view name, Rows... rows) {
    return add<function>(name, MemberKind::Get, std::move(rows)...);
  }
  template <auto function>
  TableBuilder& let(std::string_view name) {
    return add<function>(name, MemberKind::Let, val("value"));
  }
  /// A public variable: get and set for a reference, get and let for a value, all three for a variant.
  template <auto pointer>
  TableBuilder& variable(std::string_view name) {
    using Value = typename MemberVariable<decltype(pointer)>::ValueType;
    constexpr ValueType type = value_type_of<Value>();
    push({name, MemberKind::Get, 0, type, interface_name_of<Value>(), {}, &get_variable<pointer>});
    if constexpr (type != ValueType::Object) push_change<pointer>(name, MemberKind::Let, type);
    if constexpr (type == ValueType::Object) push_change<pointer>(name, MemberKind::Set, type);
    if constexpr (type == ValueType::Variant) push_change<pointer>(name, MemberKind::Set, type);
    return *this;
  }

  /// Makes the last member the one that is meant when none is named.
  TableBuilder& is_default() {
    const std::string_view name = members_.back().name;
    for (Member& member : members_) {
      if (member.name == name) member.id = ClassTable::default_member;
    }
    return *this;
  }
  /// Makes the last member's result a matrix.
  TableBuilder& gives_matrix() {
    members_.back().result = ValueType::Matrix;
    return *this;
  }
  TableBuilder& enumerates(Elements elements) {
    elements_ = elements;
    return *this;
  }

  ClassTable build() {
    const auto instance_test = [](const Object& object) {
      return dynamic_cast<const Class*>(&object) != nullptr;
    };
    return {interface_name<Class>, instance_test, std::move(members_), elements_};
  }

 private:
  template <auto function, class... Rows>
  TableBuilder& add(std::string_view name, MemberKind kind, Rows... rows) {
    using Function = Signature<decltype(function)>;
    using Result = typename Function::ResultType;
    static_assert(sizeof...(Rows) == Function::count, "each parameter has one row");
    Member member{name, kind, 0, value_type_of<Result>(), interface_name_of<Result>(), {}, nullptr};
    member.parameters =
        parameters<typename Function::ArgumentTypes>(std::index_sequence_for<Rows...>(), std::move(rows)...);
    member.invoke = &Function::template call<function>;
    push(std::move(member));
    return *this;
  }

  template <class Arguments, std::size_t... index, class... Rows>
  static std::vector<Parameter> parameters(std::index_sequence<index...>, Rows... rows) {
    return {parameter<std::tuple_element_t<index, Arguments>>(std::move(rows))...};
  }

  template <class Argument>
  static Parameter parameter(ParameterRow row) {
    using Plain = std::remove_cvref_t<Argument>;
    constexpr ValueType passed = value_type_of<Plain>();
    const bool has_default = row.optional && !row.default_value.is_missing();
    return {row.name,         row.declared.value_or(passed),
            passed,           interface_name_of<Plain>(),
            row.by_reference, is_written_back<Argument>,
            row.optional,     has_default ? convert_to(passed, row.default_value) : Variant::missing()};
  }

  template <auto pointer>
  void push_change(std::string_view name, MemberKind kind, ValueType type) {
    using Value = typename MemberVariable<decltype(pointer)>::ValueType;
    Parameter value;
    value.name = "value";
    value.type = value.passed = type;
    value.type_name = interface_name_of<Value>();
    push({name, kind, 0, ValueType::None, {}, {std::move(value)}, &set_variable<pointer>});
  }

  void push(Member member) {
    const bool same_property = !members_.empty() && members_.back().name == member.name;
    member.id = same_property ? members_.back().id : ++last_id_;
    members_.push_back(std::move(member));
  }

  std::vector<Member> members_;
  std::optional<Elements> elements_;
  std::int32_t last_id_ = 0;
};

}  // namespace pradelis::automation
