#pragma once

#include <cstdint>

#include "dataaccess/recordset.h"

namespace pradelis::automation {

/// Reads rows from the current one on and moves behind them. Result: an array with one array for each
/// field, holding that field's value in each row.
/// \param count   how many rows at most; -1: all that are left
/// \param start   Missing or 0: from the current row; 1: from the first row
/// \param fields  Missing: all; else names or positions, one of them or an array
/// Raises 3021 when there is no row to read, error 5 for another `start` or `count`.
Variant get_rows(dataaccess::Recordset& recordset, std::int32_t count, const Variant& start,
                 const Variant& fields);

}  // namespace pradelis::automation
