#pragma once

#include "com/platform.h"
#include "values/variant.h"

namespace pradelis::com {

/// Puts `value` into `target`, whatever that holds; the receiver clears it. A 64-bit integer becomes a
/// decimal, which scripts can compute with; they cannot with the platform's 64-bit integer.
/// Raises error 7 when there is no memory; `target` is empty then.
void to_variant(const Variant& value, VARIANT& target);

/// The same for an array of columns, each an array of rows, as one array of two dimensions.
void matrix_to_variant(const Variant& columns, VARIANT& target);

/// Puts `value` into the variable that `reference` refers to, and frees what it held. A variable of a
/// type of its own takes the converted value; raises what the conversion raises, and error 10 for an
/// array that somebody uses; the variable is as it was then. Nothing happens when `reference` is no
/// reference.
void write_back(const Variant& value, const VARIANT& reference);

/// New arrays, which the receiver destroys.
SAFEARRAY* new_byte_array(const Bytes& bytes);
SAFEARRAY* new_array(const Variant::Array& elements);
SAFEARRAY* new_matrix(const Variant::Array& columns);

}  // namespace pradelis::com
