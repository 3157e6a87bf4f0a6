#include "dataaccess/column_values.h"

#include <charconv>
#include <limits>

#include "dataaccess/iso_date.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

template <class Integer>
bool fits(std::int64_t value) noexcept {
  return value >= std::numeric_limits<Integer>::min() && value <= std::numeric_limits<Integer>::max();
}

ColumnType type_of_integer(std::int64_t value, const Column& column) noexcept {
  if (column.declared) {
    switch (column.type) {
      case ColumnType::Boolean:
        return ColumnType::Boolean;
      case ColumnType::Double:
        return ColumnType::Double;
      case ColumnType::UInt8:
        if (fits<std::uint8_t>(value)) return ColumnType::UInt8;
        break;
      case ColumnType::Int16:
        if (fits<std::int16_t>(value)) return ColumnType::Int16;
        break;
      case ColumnType::Int64:
        return ColumnType::Int64;
      default:
        break;
    }
  }
  return fits<std::int32_t>(value) ? ColumnType::Int32 : ColumnType::Int64;
}

Variant integer_variant(std::int64_t value, ColumnType type) {
  switch (type) {
    case ColumnType::Boolean:
      return value != 0;
    case ColumnType::UInt8:
      return static_cast<std::uint8_t>(value);
    case ColumnType::Int16:
      return static_cast<std::int16_t>(value);
    case ColumnType::Int32:
      return static_cast<std::int32_t>(value);
    case ColumnType::Double:
      return static_cast<double>(value);
    default:
      return value;
  }
}

Variant text_variant(std::string_view text, const Column& column) {
  if (column.type == ColumnType::Date && column.declared) {
    if (const auto date = read_iso_date(text)) return *date;
  }
  return text;
}

Variant decimal_variant(std::string_view digits) {
  double number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

std::string_view type_name(ColumnType type) noexcept {
  switch (type) {
    case ColumnType::Boolean:
      return "booleano";
    case ColumnType::UInt8:
    case ColumnType::Int16:
    case ColumnType::Int32:
    case ColumnType::Int64:
      return "número inteiro";
    case ColumnType::Double:
      return "número";
    case ColumnType::Date:
      return "data";
    case ColumnType::Text:
      return "texto";
    case ColumnType::Bytes:
      return "binário";
  }
  return "";
}

[[noreturn]] void refuse(const Column& column, std::string_view table, std::string_view reason) {
  raise(error_number::value_does_not_fit,
        concat("O valor não serve para o campo ", column.name, " da tabela ", table, " (",
               type_name(column.type), "): ", reason));
}

void check_size(std::size_t size, const Column& column, std::string_view table) {
  constexpr std::size_t largest = std::numeric_limits<std::int32_t>::max();
  if (size > largest) refuse(column, table, "valor grande demais.");
}

Variant fitted_text(const Variant& value, const Column& column, std::string_view table) {
  if (!value.is(VariantType::Text)) return to_text(value);
  const std::string& text = value.get<std::string>();
  check_size(text.size(), column, table);
  if (!is_valid_utf8(text)) refuse(column, table, "texto que não é UTF-8 válido.");
  return value;
}

Variant fitted_bytes(const Variant& value, const Column& column, std::string_view table) {
  check_size(value.get<Bytes>().size(), column, table);
  return value;
}

Variant fitted_date(const Variant& value, const Column& column) {
  if (value.is(VariantType::Text) && value.get<std::string>().empty()) return Variant::null();
  Date date = to_date(value);
  if (column.day_only) date.serial = static_cast<double>(day_number(date));
  static_cast<void>(parts_of(date));  // a number outside the years of dates is refused here
  return date;
}

// A column that was declared without a type takes any plain value.
Variant plain(const Variant& value) {
  if (value.is(VariantType::Array) || value.is(VariantType::Object)) raise_type_mismatch();
  return value;
}

Variant converted(const Variant& value, const Column& column, std::string_view table) {
  if (!column.declared && !value.is(VariantType::Text)) return plain(value);
  switch (column.type) {
    case ColumnType::Boolean:
      return to_boolean(value);
    case ColumnType::UInt8:
      return to_uint8(value);
    case ColumnType::Int16:
      return to_int16(value);
    case ColumnType::Int32:
      return to_int32(value);
    case ColumnType::Int64:
      return to_int64(value);
    case ColumnType::Double:
      return to_double(value);
    case ColumnType::Date:
      return fitted_date(value, column);
    case ColumnType::Text:
      return fitted_text(value, column, table);
    case ColumnType::Bytes:
      return fitted_bytes(value, column, table);
  }
  raise_type_mismatch();
}

}  // namespace

ColumnType type_of(const Cell& cell, const Column& column) {
  switch (cell.kind) {
    case CellKind::Null:
      return column.type;
    case CellKind::Boolean:
      return ColumnType::Boolean;
    case CellKind::Integer:
      return type_of_integer(cell.integer, column);
    case CellKind::Real:
    case CellKind::Decimal:
      return ColumnType::Double;
    case CellKind::Date:
    case CellKind::Day:
      return ColumnType::Date;
    case CellKind::Text:
      return column.declared && column.type == ColumnType::Date && read_iso_date(cell.text())
                 ? ColumnType::Date
                 : ColumnType::Text;
    case CellKind::Bytes:
      return ColumnType::Bytes;
  }
  return column.type;
}

Variant variant_of_any(const Cell& cell, const Column& column) {
  switch (cell.kind) {
    case CellKind::Null:
      return Variant::null();
    case CellKind::Boolean:
      return cell.integer != 0;
    case CellKind::Integer:
      return integer_variant(cell.integer, type_of_integer(cell.integer, column));
    case CellKind::Real:
      return cell.real;
    case CellKind::Date:
    case CellKind::Day:
      return Date{cell.real};
    case CellKind::Decimal:
      return decimal_variant(cell.text());
    case CellKind::Text:
      return text_variant(cell.text(), column);
    case CellKind::Bytes: {
      const auto bytes = cell.bytes();
      return Bytes(bytes.begin(), bytes.end());
    }
  }
  return {};
}

Variant fitted(const Variant& value, const Column& column, std::string_view table) {
  if (value.is_null() || value.is_empty()) return Variant::null();
  if (value.is_missing()) refuse(column, table, "nenhum valor foi informado.");
  try {
    return converted(value, column, table);
  } catch (const Error& failure) {
    if (failure.number() == error_number::value_does_not_fit) throw;
    refuse(column, table, failure.description());
  }
}

Cell to_cell(const Variant& value, const Column& column) {
  switch (value.type()) {
    case VariantType::Boolean:
      return Cell::of(std::int64_t{value.get<bool>()}, CellKind::Boolean);
    case VariantType::UInt8:
      return Cell::of(std::int64_t{value.get<std::uint8_t>()});
    case VariantType::Int16:
      return Cell::of(std::int64_t{value.get<std::int16_t>()});
    case VariantType::Int32:
      return Cell::of(std::int64_t{value.get<std::int32_t>()});
    case VariantType::Int64:
      return Cell::of(value.get<std::int64_t>());
    case VariantType::Double:
      return Cell::of(value.get<double>());
    case VariantType::Date:
      return Cell::of(value.get<Date>().serial, column.day_only ? CellKind::Day : CellKind::Date);
    case VariantType::Text:
      return Cell::of(std::string_view(value.get<std::string>()));
    case VariantType::Bytes:
      return Cell::of(value.get<Bytes>());
    default:
      return Cell::null(column.type);
  }
}

}  // namespace pradelis::dataaccess
