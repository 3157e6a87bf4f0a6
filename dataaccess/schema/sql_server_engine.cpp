#include "dataaccess/schema/engine.h"
#include "values/text.h"

namespace pradelis::dataaccess::schema {
namespace {

// Texts are equal only to themselves, whatever the database's own collation.
constexpr std::string_view exact = " collate Latin1_General_100_BIN2";

std::string type_name(const Column& column) {
  switch (column.type) {
    case Type::Key:
      return "int primary key";
    case Type::Identity:
    case Type::LastingIdentity:
      return "int identity(1, 1) primary key";
    case Type::TextKey:
      return concat("nvarchar(", static_cast<std::int64_t>(column.size), ")", exact, " primary key");
    case Type::Int16:
      return "smallint";
    case Type::Int32:
      return "int";
    case Type::Double:
      return "float";
    case Type::DateTime:
      return "datetime2(3)";
    case Type::Text:
      return concat("nvarchar(", static_cast<std::int64_t>(column.size), ")", exact);
    case Type::LongText:
      return concat("nvarchar(max)", exact);
    case Type::Bytes:
      return "varbinary(max)";
  }
  return {};
}

std::string take_identifiers(std::int32_t count) {
  return concat("update instalacao set proximooid = proximooid + ", count,
                " output inserted.proximooid where oid = 1");
}

}  // namespace

const Engine sql_server_engine = {
    .name = "sqlserver",
    .type_name = type_name,
    .upper_case = "upper",
    .computed_columns = true,
    .catalogue =
        "select case type when 'U' then 'table' else 'view' end, name from sys.objects"
        " where schema_id = schema_id() and type in ('U', 'V')"
        " union all select 'index', i.name from sys.indexes i, sys.objects o"
        " where i.object_id = o.object_id and o.schema_id = schema_id() and i.name is not null",
    .take_identifiers = take_identifiers,
};

}  // namespace pradelis::dataaccess::schema
