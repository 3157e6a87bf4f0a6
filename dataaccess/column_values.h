#pragma once

#include <cstdint>
#include <string_view>

#include "dataaccess/cell.h"
#include "dataaccess/result_columns.h"
#include "values/variant.h"

namespace pradelis::dataaccess {

/// `to_variant` for cells of any kind.
Variant variant_of_any(const Cell& cell, const Column& column);

/// The value of a fetched cell, of its column's type. A cell that does not fit the type (the embedded
/// database lets a column hold anything) gives a value of its own type.
inline Variant to_variant(const Cell& cell, const Column& column) {
  if (cell.kind == CellKind::Integer && column.type == ColumnType::Int32) {  // most cells
    const auto integer = static_cast<std::int32_t>(cell.integer);
    if (integer == cell.integer) return integer;
  }
  return variant_of_any(cell, column);
}

/// Type of the values that a cell gives.
ColumnType type_of(const Cell& cell, const Column& column);

/// `value` as a column takes it: of the column's type, or Null. Empty gives Null, an empty text gives
/// Null for a date column. `table` is for the failure's text.
/// Raises -2147217887 for a value that cannot be converted, Missing and invalid UTF-8 among them.
Variant fitted(const Variant& value, const Column& column, std::string_view table);

/// The cell of a value that `fitted` gave; it points into `value`.
Cell to_cell(const Variant& value, const Column& column);

}  // namespace pradelis::dataaccess
