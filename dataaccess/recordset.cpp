#include "dataaccess/recordset.h"

#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess {

const std::string& Field::Name() const { return recordset_->field_name(index_); }

ColumnType Field::Type() const { return recordset_->field_type(index_); }

Variant Field::Value() const { return recordset_->value(index_); }

void Field::set_Value(const Variant& value) { recordset_->set_value(index_, value); }

std::int32_t Fields::Count() const { return static_cast<std::int32_t>(recordset_->field_count()); }

FieldPtr Fields::Item(const Variant& index) const {
  if (index.is(VariantType::Text)) {
    return std::make_shared<Field>(recordset_, recordset_->field_index(index.get<std::string>()));
  }
  const std::int32_t position = to_int32(index);
  if (position < 0 || position >= Count()) {
    raise(error_number::no_such_field, concat("O campo ", position, " não existe no recordset."));
  }
  return std::make_shared<Field>(recordset_, static_cast<std::size_t>(position));
}

FieldsPtr Recordset::Fields() {
  return std::make_shared<dataaccess::Fields>(std::static_pointer_cast<Recordset>(shared_from_this()));
}

}  // namespace pradelis::dataaccess
