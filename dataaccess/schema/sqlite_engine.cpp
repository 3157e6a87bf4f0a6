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
    case Type::TextKey:
      return concat("varchar(", static_cast<std::int64_t>(column.size), ") primary key not null");
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

std::string take_identifiers(std::int32_t count) {
  return concat("update instalacao set proximooid = proximooid + ", count,
                " where oid = 1 returning proximooid");
}

constexpr Engine engine_with(std::string_view name, std::string_view upper_case,
                             decltype(Engine::take_identifiers) taking_identifiers) {
  return {
      .name = name,
      .type_name = type_name,
      .upper_case = upper_case,
      .catalogue = "select type, name from sqlite_master",
      .begin = "begin immediate",
      .commit = "commit",
      .rollback = "rollback",
      .unforced_writes = "pragma synchronous = off",
      .take_identifiers = taking_identifiers,
  };
}

}  // namespace

const Engine sqlite_engine = engine_with("sqlite", "maiuscula", take_identifiers);
// A file that is reached by ODBC alone: its indexes must not need a function that the driver lacks, and the
// driver gives no rows of a statement that changes some.
const Engine sqlite_odbc_engine = engine_with("sqlite-odbc", "upper", nullptr);

}  // namespace pradelis::dataaccess::schema
