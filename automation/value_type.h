#pragma once

#include <cstdint>
#include <string_view>

#include "values/variant.h"

namespace pradelis::automation {

/// Type of a parameter or result, as the interface declares it.
enum class ValueType : std::uint8_t {
  None,  ///< a method without result
  Boolean,
  UInt8,
  Int16,
  Int32,  ///< enumerations too
  Int64,
  Double,
  Date,
  Text,
  Variant,
  Matrix,  ///< a variant holding an array of columns, each an array of rows: for callers a(column, row)
  Object,
};

/// Name of the type of a variant: "empty", "null", "missing", "boolean", "uint8", "int16", "int32",
/// "int64", "double", "date", "text", "bytes", "array" or "object".
std::string_view type_name(VariantType type) noexcept;

/// Whether a variant of type `held` is handed to a parameter of type `wanted` as it is.
bool holds(VariantType held, ValueType wanted) noexcept;

/// `value` as a parameter of type `wanted` takes it. Raises what the conversions of
/// `values/convert.h` raise; for `Object` error 13 when `value` holds no reference.
Variant convert_to(ValueType wanted, const Variant& value);

}  // namespace pradelis::automation
