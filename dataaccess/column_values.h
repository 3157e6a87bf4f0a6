#pragma once

#include <string_view>

#include "dataaccess/cell.h"
#include "dataaccess/result_columns.h"
#include "values/variant.h"

namespace pradelis::dataaccess {

/// The value of a fetched cell, of its column's type. A cell that does not fit the type (the embedded
/// database lets a column hold anything) gives a value of its own type.
Variant to_variant(const Cell& cell, const Column& column);

/// Type of the values that a cell gives.
ColumnType type_of(const Cell& cell, const Column& column);

/// `value` as a column takes it: of the column's type, or Null. Empty gives Null, an empty text gives
/// Null for a date column. `table` is for the failure's text.
/// Raises -2147217887 for a value that cannot be converted, Missing and invalid UTF-8 among them.
Variant fitted(const Variant& value, const Column& column, std::string_view table);

/// The cell of a value that `fitted` gave; it points into `value`.
Cell to_cell(const Variant& value, const Column& column);

}  // namespace pradelis::dataaccess
