#pragma once

#include <string>

/// The engine that the tests of this process run on: SQLite, or PostgreSQL when the environment's
/// PRADELIS_TEST_ENGINE says "postgresql". The same tests run on each; where an engine must differ, a
/// test asks one of these questions.
namespace pradelis::tests {

bool on_postgresql();

/// Rows of a query without "order by" come in the order of their keys; a server gives them as it finds
/// them.
inline bool gives_unsorted_rows_by_key() { return !on_postgresql(); }

/// The engine refuses a text that is longer than its column's declaration; SQLite keeps it.
inline bool refuses_long_texts() { return on_postgresql(); }

/// Each column of a result has a type before there is a row; SQLite knows none for an expression.
inline bool types_expressions() { return on_postgresql(); }

/// A table without a key has numbered rows all the same, and a single integer key is assigned when it is
/// not given.
inline bool numbers_rows() { return !on_postgresql(); }

/// A column holds whatever is put into it, also where it has another type or none.
inline bool keeps_any_type() { return !on_postgresql(); }

/// There is a type for a single byte.
inline bool has_bytes_as_numbers() { return !on_postgresql(); }

/// SQLite's words for types and binary literals in a statement, as the engine has them.
std::string in_engine_words(const std::string& sql);

}  // namespace pradelis::tests
