#include "command/json_rows.h"

#include "dataaccess/recordset.h"
#include "values/error.h"

namespace pradelis::command {
namespace {

std::string_view name_of(dataaccess::ColumnType type) {
  switch (type) {
    case dataaccess::ColumnType::Boolean:
      return "boolean";
    case dataaccess::ColumnType::UInt8:
      return "uint8";
    case dataaccess::ColumnType::Int16:
      return "int16";
    case dataaccess::ColumnType::Int32:
      return "int32";
    case dataaccess::ColumnType::Int64:
      return "int64";
    case dataaccess::ColumnType::Double:
      return "double";
    case dataaccess::ColumnType::Date:
      return "date";
    case dataaccess::ColumnType::Text:
      return "text";
    case dataaccess::ColumnType::Bytes:
      return "bytes";
  }
  return "";
}

Json row_to_json(dataaccess::Recordset& recordset) {
  Json row = Json::array();
  for (std::size_t i = 0; i < recordset.field_count(); ++i) row.push_back(to_json(recordset.value(i)));
  return row;
}

}  // namespace

Json rows_to_json(const ObjectPtr& object, std::int64_t limit) {
  const auto recordset = std::dynamic_pointer_cast<dataaccess::Recordset>(object);
  if (!recordset) raise(error_number::type_mismatch);
  Json columns = Json::array();
  Json types = Json::array();
  for (std::size_t i = 0; i < recordset->field_count(); ++i) {
    columns.push_back(recordset->field_name(i));
    types.push_back(name_of(recordset->field_type(i)));
  }
  Json rows = Json::array();
  for (std::int64_t read = 0; read != limit && !recordset->Eof(); ++read) {
    rows.push_back(row_to_json(*recordset));
    recordset->MoveNext();
  }
  return {{"columns", std::move(columns)}, {"types", std::move(types)}, {"rows", std::move(rows)}};
}

}  // namespace pradelis::command
