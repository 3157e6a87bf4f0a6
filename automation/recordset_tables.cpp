#include <cstdint>

#include "automation/classes.h"
#include "automation/get_rows.h"
#include "automation/table_builder.h"

namespace pradelis::automation {
namespace {

using dataaccess::ColumnType;
using dataaccess::Field;
using dataaccess::Fields;
using dataaccess::Recordset;

std::size_t count_of(Object& fields) {
  return static_cast<std::size_t>(static_cast<Fields&>(fields).Count());
}

Variant field_at(Object& fields, std::size_t index) {
  return ObjectPtr(static_cast<Fields&>(fields).Item(static_cast<std::int32_t>(index)));
}

/// The platform's code for the type of a field.
std::int32_t type_of(Field& field) {
  switch (field.Type()) {
    case ColumnType::Boolean:
      return 11;
    case ColumnType::UInt8:
      return 17;
    case ColumnType::Int16:
      return 2;
    case ColumnType::Int32:
      return 3;
    case ColumnType::Int64:
      return 20;
    case ColumnType::Double:
      return 5;
    case ColumnType::Date:
      return 135;
    case ColumnType::Text:
      return 202;
    case ColumnType::Bytes:
      return 204;
  }
  return 0;
}

}  // namespace

const ClassTable& recordset_table() {
  static const ClassTable table =
      TableBuilder<Recordset>()
          .get<&Recordset::Fields>("Fields")
          .is_default()
          .get<&Recordset::Eof>("EOF")
          .get<&Recordset::Bof>("BOF")
          .get<&Recordset::RecordCount>("RecordCount")
          .get<&Recordset::State>("State")
          .method<&Recordset::MoveNext>("MoveNext")
          .method<&Recordset::MoveFirst>("MoveFirst")
          .method<&Recordset::AddNew>("AddNew")
          .method<&Recordset::Update>("Update")
          .method<&Recordset::CancelUpdate>("CancelUpdate")
          .method<&Recordset::Delete>("Delete")
          .method<&Recordset::Close>("Close")
          .method<&get_rows>("GetRows", val("Rows", -1), val("Start", none()), val("Fields", none()))
          .gives_matrix()
          .build();
  return table;
}

const ClassTable& fields_table() {
  static const ClassTable table = TableBuilder<Fields>()
                                      .get<&Fields::Item>("Item", val("Index"))
                                      .is_default()
                                      .get<&Fields::Count>("Count")
                                      .enumerates({&count_of, &field_at})
                                      .build();
  return table;
}

const ClassTable& field_table() {
  static const ClassTable table = TableBuilder<Field>()
                                      .get<&Field::Value>("Value")
                                      .let<&Field::set_Value>("Value")
                                      .is_default()
                                      .get<&Field::Name>("Name")
                                      .get<&type_of>("Type")
                                      .build();
  return table;
}

}  // namespace pradelis::automation
