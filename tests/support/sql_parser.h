#pragma once

#include <string>
#include <vector>

/// A parser for the dialects of servers that are not at hand.
namespace pradelis::tests {

/// Whether the parser is installed (the package `sqlfluff`).
bool has_sql_parser();

/// Has statements parsed in a dialect ("tsql", "oracle"); gives those that it does not understand, each
/// with a line break after it, and what else it complains of. Empty when it understands all.
std::string not_understood(const std::string& dialect, const std::vector<std::string>& statements);

}  // namespace pradelis::tests
