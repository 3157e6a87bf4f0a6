#pragma once

#include "com/platform.h"
#include "values/variant.h"

namespace pradelis::com {

/// What a variant of the platform holds; one that refers to a variable elsewhere gives that variable's
/// content.
///
/// - Integers without a type here become the next larger one, currency becomes a double, decimals
///   without a fraction a 64-bit integer and others a double.
/// - Arrays of bytes become bytes, all others arrays of variants; those of several dimensions arrays of
///   arrays, the first index outermost. Lower bounds are lost.
/// - The code of an omitted argument becomes Missing. Raises error 13 for other codes and for types of
///   records.
/// - References become objects: the component's own where they lead back to one, else `ForeignObject`s.
Variant from_variant(const VARIANT& value);

/// The same where no object is wanted: the default value of somebody else's object takes its place.
Variant value_from_variant(const VARIANT& value);

/// What a place in memory that holds a value of this type holds (`type` has no reference flag).
Variant from_memory(VARTYPE type, const void* place);

/// The elements of an array; empty for a null pointer.
Variant from_safe_array(SAFEARRAY* array);

}  // namespace pradelis::com
