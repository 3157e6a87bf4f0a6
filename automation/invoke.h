#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "automation/class_table.h"

/// Calls by name, as scripts make them: any convertible value does for an argument, what a method
/// writes back arrives in the caller's own variable.
namespace pradelis::automation {

/// An argument given by the name of its parameter.
struct NamedArgument {
  std::string_view parameter;
  Variant* value;
};

/// What a caller hands over: his variables, in the order of the parameters, then those given by name.
/// For `Let` and `Set` the last positional one is the new value.
struct Arguments {
  std::span<Variant> positional;
  std::span<const NamedArgument> named = {};
};

/// Uses one member of an object: runs a method, reads a property, or changes it.
///
/// - A value of another type than the parameter's is converted; a field in place of a value counts as
///   its value. Where nothing is written back the caller's variable stays as it is.
/// - A parameter that the method writes back leaves the caller's variable in exactly its own type, also
///   when the method fails half-way.
/// - An optional parameter that is omitted, or given as Missing, takes its default. A required variant
///   takes Missing as it is.
/// - Arguments to a property that has none are for the default member of the object that it gives:
///   `Read` of "Fields" with "nome" is the item "nome" of the fields, and a `Let` sets its value.
///
/// Result: Empty for a method without one. Raises 438 when the class has no such member or it cannot be
/// used so, 448 for an unknown named argument, 449 for a required one that is not given, 450 for too
/// many, 91 when a property to go on with holds no object, 13, 94 or 6 when an argument cannot be
/// converted, and whatever the member raises.
Variant invoke(Object& object, std::int32_t id, Use use, Arguments arguments);

/// The same by the member's name, whatever its case.
Variant invoke(Object& object, std::string_view name, Use use, Arguments arguments);

/// The value that stands for `value` where no object is wanted: that of the default property of an
/// object whose class has one without parameters (a field), else `value` itself.
Variant default_value(const Variant& value);

}  // namespace pradelis::automation
