#pragma once

#include "dataaccess/result_columns.h"

struct sqlite3_stmt;

namespace pradelis::dataaccess::sqlite {

/// The columns of a prepared statement's result, with the types that their tables declare.
ResultColumnsPtr describe_columns(sqlite3_stmt* statement);

}  // namespace pradelis::dataaccess::sqlite
