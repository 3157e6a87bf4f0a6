#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "automation/class_names.h"
#include "automation/class_table.h"
#include "values/error.h"

/// What a member's row takes from its C++ function: types, what is written back, and the call itself.
namespace pradelis::automation {

template <class T>
inline constexpr bool is_reference_to_object = false;
template <class T>
inline constexpr bool is_reference_to_object<std::shared_ptr<T>> = true;

/// How a C++ type stands in the interface.
template <class T>
constexpr ValueType value_type_of() {
  if constexpr (std::is_void_v<T>)
    return ValueType::None;
  else if constexpr (std::is_same_v<T, bool>)
    return ValueType::Boolean;
  else if constexpr (std::is_same_v<T, std::uint8_t>)
    return ValueType::UInt8;
  else if constexpr (std::is_same_v<T, std::int16_t>)
    return ValueType::Int16;
  else if constexpr (std::is_same_v<T, std::int32_t> || std::is_enum_v<T>)
    return ValueType::Int32;
  else if constexpr (std::is_same_v<T, std::int64_t>)
    return ValueType::Int64;
  else if constexpr (std::is_same_v<T, double>)
    return ValueType::Double;
  else if constexpr (std::is_same_v<T, Date>)
    return ValueType::Date;
  else if constexpr (std::is_same_v<T, std::string>)
    return ValueType::Text;
  else if constexpr (std::is_same_v<T, Variant>)
    return ValueType::Variant;
  else {
    static_assert(is_reference_to_object<T>, "the interface has no such type");
    return ValueType::Object;
  }
}

/// Class of a reference, name of an enumeration, else nothing.
template <class T>
constexpr std::string_view interface_name_of() {
  if constexpr (is_reference_to_object<T>)
    return interface_name<typename T::element_type>;
  else if constexpr (std::is_enum_v<T>)
    return interface_name<T>;
  else
    return {};
}

/// A value of the C++ side as a variant.
template <class T>
Variant to_variant(T&& value) {
  using Plain = std::remove_cvref_t<T>;
  if constexpr (std::is_enum_v<Plain>)
    return static_cast<std::int32_t>(value);
  else if constexpr (is_reference_to_object<Plain>)
    return ObjectPtr(std::forward<T>(value));
  else
    return std::forward<T>(value);
}

/// The reference that a variant holds, as one to an object of class `T`; may be a reference to none.
template <class T>
std::shared_ptr<T> reference_to(const Variant& value) {
  const ObjectPtr& object = value.get<ObjectPtr>();
  auto result = std::dynamic_pointer_cast<T>(object);
  if (object && !result) raise(error_number::type_mismatch);
  return result;
}

/// The C++ argument that a variant of exactly its type stands for; references bind to the variant.
template <class Argument>
decltype(auto) unwrap(Variant& value) {
  using Plain = std::remove_cvref_t<Argument>;
  if constexpr (std::is_same_v<Plain, Variant>)
    return (value);
  else if constexpr (std::is_enum_v<Plain>)
    return static_cast<Plain>(value.get<std::int32_t>());
  else if constexpr (is_reference_to_object<Plain>)
    return reference_to<typename Plain::element_type>(value);
  else
    return (value.get<Plain>());
}

template <class T>
inline constexpr bool is_written_back =
    std::is_lvalue_reference_v<T> && !std::is_const_v<std::remove_reference_t<T>>;

/// Takes a function apart: a member function, or a free one that takes the object first.
template <class Function>
struct Signature;

template <class Class, class Result, class... Arguments>
struct Callable {
  using Owner = Class;
  using ResultType = std::remove_cvref_t<Result>;
  using ArgumentTypes = std::tuple<Arguments...>;
  static constexpr std::size_t count = sizeof...(Arguments);

  template <auto function>
  static Variant call(Object& object, std::span<Variant* const> arguments) {
    return call<function>(static_cast<Class&>(object), arguments, std::index_sequence_for<Arguments...>());
  }

 private:
  template <auto function, std::size_t... index>
  static Variant call(Class& object, [[maybe_unused]] std::span<Variant* const> arguments,
                      std::index_sequence<index...>) {
    if constexpr (std::is_void_v<Result>) {
      std::invoke(function, object, unwrap<Arguments>(*arguments[index])...);
      return {};
    } else {
      return to_variant(std::invoke(function, object, unwrap<Arguments>(*arguments[index])...));
    }
  }
};

template <class Class, class Result, class... Arguments>
struct Signature<Result (Class::*)(Arguments...)> : Callable<Class, Result, Arguments...> {};
template <class Class, class Result, class... Arguments>
struct Signature<Result (Class::*)(Arguments...) const> : Callable<Class, Result, Arguments...> {};
template <class Class, class Result, class... Arguments>
struct Signature<Result (*)(Class&, Arguments...)> : Callable<Class, Result, Arguments...> {};

/// Takes a public variable apart.
template <class Variable>
struct MemberVariable;
template <class Class, class Value>
struct MemberVariable<Value Class::*> {
  using Owner = Class;
  using ValueType = Value;
};

template <auto variable>
Variant get_variable(Object& object, std::span<Variant* const>) {
  using Owner = typename MemberVariable<decltype(variable)>::Owner;
  return to_variant(static_cast<Owner&>(object).*variable);
}

template <auto variable>
Variant set_variable(Object& object, std::span<Variant* const> arguments) {
  using Variable = MemberVariable<decltype(variable)>;
  static_cast<typename Variable::Owner&>(object).*variable =
      unwrap<const typename Variable::ValueType&>(*arguments[0]);
  return {};
}

}  // namespace pradelis::automation
