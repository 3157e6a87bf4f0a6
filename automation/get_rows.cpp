#include "automation/get_rows.h"

#include <vector>

#include "values/convert.h"
#include "values/error.h"

namespace pradelis::automation {
namespace {

constexpr std::int32_t all_rows = -1;

std::size_t position_of(dataaccess::Recordset& recordset, const Variant& field) {
  if (field.is(VariantType::Text)) return recordset.field_index(field.get<std::string>());
  const std::int32_t position = to_int32(field);
  if (position < 0 || static_cast<std::size_t>(position) >= recordset.field_count()) {
    raise(error_number::no_such_field);
  }
  return static_cast<std::size_t>(position);
}

std::vector<std::size_t> positions_of(dataaccess::Recordset& recordset, const Variant& fields) {
  std::vector<std::size_t> positions;
  if (fields.is_missing()) {
    for (std::size_t i = 0; i < recordset.field_count(); ++i) positions.push_back(i);
  } else if (fields.is(VariantType::Array)) {
    for (const Variant& field : fields.get<Variant::Array>())
      positions.push_back(position_of(recordset, field));
  } else {
    positions.push_back(position_of(recordset, fields));
  }
  return positions;
}

void go_to(dataaccess::Recordset& recordset, const Variant& start) {
  if (start.is_missing()) return;
  constexpr std::int32_t current_row = 0;
  constexpr std::int32_t first_row = 1;
  const std::int32_t bookmark = to_int32(start);
  if (bookmark == first_row)
    recordset.MoveFirst();
  else if (bookmark != current_row)
    raise(error_number::invalid_argument);
}

}  // namespace

Variant get_rows(dataaccess::Recordset& recordset, std::int32_t count, const Variant& start,
                 const Variant& fields) {
  if (count < all_rows) raise(error_number::invalid_argument);
  const std::vector<std::size_t> positions = positions_of(recordset, fields);
  go_to(recordset, start);
  if (recordset.Eof()) raise(error_number::no_current_row);

  std::vector<Variant::Array> columns(positions.size());
  for (std::int32_t row = 0; (count == all_rows || row < count) && !recordset.Eof(); ++row) {
    for (std::size_t i = 0; i < positions.size(); ++i) columns[i].push_back(recordset.value(positions[i]));
    recordset.MoveNext();
  }
  Variant::Array matrix;
  matrix.reserve(columns.size());
  for (Variant::Array& column : columns) matrix.emplace_back(std::move(column));
  return matrix;
}

}  // namespace pradelis::automation
