#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "values/error.h"

/// The Portuguese words of the failures of this layer.
namespace pradelis::dataaccess {

/// The beginning of a statement as a failure may show it: on one line, with '…' for each text in it,
/// since texts can be secrets.
std::string shown_statement(std::string_view statement);

/// Raises a driver's failure again: what failed in Portuguese, with the statement's beginning, then the
/// database's own text.
[[noreturn]] void raise_for_statement(const Error& failure, std::string_view statement);

[[noreturn]] void raise_closed_recordset();
[[noreturn]] void raise_closed_connection();
[[noreturn]] void raise_no_current_row();
[[noreturn]] void raise_no_such_field(std::string_view name);
[[noreturn]] void raise_read_only(std::string_view why);
[[noreturn]] void raise_changed_by_other(std::string_view table);

/// Raises -2147217900 for a statement that is no valid UTF-8 or has a NUL in it.
void check_statement_text(std::string_view statement);

}  // namespace pradelis::dataaccess
