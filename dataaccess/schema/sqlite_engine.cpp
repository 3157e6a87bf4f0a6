#include "dataaccess/schema/engine.h"
#include "values/text.h"

namespace pradelis::dataaccess::schema {
namespace {

std::string type_name(const Column& column) {
  switch (column.type) {
    case Type::Key:
    case Type::Identity:
      return "integer primary key";  // the row's own number, a fifth faster than a key beside it
    case Type::LastingIdentity:
      return "integer primary key autoincrement";
    case Type::Int16:
      return "smallint";
    case Type::Int32:
      return "integer";
    case Type::Double:
      return "double";
    case Type::DateTime:
      return "datetime";
    case Type::Text:
      return concat("varchar(", static_cast<std::int64_t>(column.size), ")");
    case Type::LongText:
      return "text";
    case Type::Bytes:
      return "blob";
  }
  return {};
}

std::string declaration(const Column& column) {
  return type_name(column) + (column.required ? " not null" : "");
}

std::string take_identifiers(std::int32_t count) {
  return concat("update instalacao set proximooid = proximooid + ", count,
                " where oid = 1 returning proximooid");
}

}  // namespace

const Engine sqlite_engine = {
    .name = "sqlite",
    .declaration = declaration,
    .upper_case = "maiuscula",
    .catalogue = "select type, name from sqlite_master",
    .begin = "begin immediate",
    .commit = "commit",
    .rollback = "rollback",
    .take_identifiers = take_identifiers,
};

}  // namespace pradelis::dataaccess::schema
