#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/odbc/session.h"

namespace pradelis::dataaccess::odbc {

/// A table's name taken apart, each part as the server's catalogue writes it.
struct TableName {
  std::string catalogue;
  std::string schema;
  std::string table;
};

/// Takes a name apart as it stands in a statement: parts with points between, each plain or quoted
/// ("x", [x] or `x`). Plain parts take the case in which the server keeps them.
/// \param identifier_case  the driver's SQL_IDENTIFIER_CASE
TableName parse_table_name(std::string_view name, SQLUSMALLINT identifier_case);

/// Columns of a table's primary key, in order, from the driver's catalogue; none for one without. The
/// process asks once for each table of each `database`, a text that tells databases apart.
std::vector<std::string> key_columns_of(Session& session, std::string_view database, std::string_view table);

}  // namespace pradelis::dataaccess::odbc
