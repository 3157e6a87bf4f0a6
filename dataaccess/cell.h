#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "dataaccess/recordset.h"
#include "values/variant.h"

namespace pradelis::dataaccess {

enum class CellKind : std::uint8_t {
  Null,
  Boolean,  ///< `integer` is 0 or 1
  Integer,
  Real,
  Decimal,  ///< a number as its decimal text ("-12.50"), exact
  Date,     ///< `real` is the serial of a `Date`
  Day,      ///< as Date, for a column that holds days without time of day
  Text,     ///< UTF-8
  Bytes,
};

/// A value on its way between a driver and the layers above it: one that was fetched, or one for a
/// parameter marker. Texts, bytes and decimals are not owned: whoever makes the cell says how long
/// they stay.
struct Cell {
  CellKind kind = CellKind::Null;
  ColumnType null_type = ColumnType::Text;  ///< of a Null parameter: what it would be
  std::uint32_t size = 0;                   ///< bytes at `data`
  union {
    std::int64_t integer = 0;
    double real;
    const char* data;
  };

  static Cell null(ColumnType type = ColumnType::Text) noexcept {
    Cell cell;
    cell.null_type = type;
    return cell;
  }
  static Cell of(std::int64_t value, CellKind kind = CellKind::Integer) noexcept {
    Cell cell;
    cell.kind = kind;
    cell.integer = value;
    return cell;
  }
  static Cell of(double value, CellKind kind = CellKind::Real) noexcept {
    Cell cell;
    cell.kind = kind;
    cell.real = value;
    return cell;
  }
  static Cell of(std::string_view value, CellKind kind = CellKind::Text) noexcept {
    Cell cell;
    cell.kind = kind;
    cell.size = static_cast<std::uint32_t>(value.size());
    cell.data = value.data();
    return cell;
  }
  static Cell of(const Bytes& value) noexcept {
    return of(std::string_view(reinterpret_cast<const char*>(value.data()), value.size()), CellKind::Bytes);
  }

  bool is_null() const noexcept { return kind == CellKind::Null; }
  /// Whether `data` and `size` count.
  bool has_data() const noexcept {
    return kind == CellKind::Text || kind == CellKind::Bytes || kind == CellKind::Decimal;
  }
  std::string_view text() const noexcept { return {data, size}; }
  std::span<const std::byte> bytes() const noexcept {
    return {reinterpret_cast<const std::byte*>(data), size};
  }
};

}  // namespace pradelis::dataaccess
