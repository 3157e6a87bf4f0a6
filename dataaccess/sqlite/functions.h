#pragma once

struct sqlite3;

namespace pradelis::dataaccess::sqlite {

/// Gives a connection the functions that the suite's statements need: `upper`, `lower` and
/// `maiuscula` (another name of `upper`, for conditions and indexes), for all letters.
void add_functions(sqlite3* database);

}  // namespace pradelis::dataaccess::sqlite
