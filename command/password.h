#pragma once

#include <string>

namespace pradelis::command {

/// Asks for a new password on the process's terminal, without showing it, and once more to be sure.
/// Raises a `std::runtime_error` with a Portuguese text when there is no terminal, when the two differ
/// or when it is empty.
std::string ask_for_new_password(const std::string& whose);

/// The password that is the first line of a file, "-" for standard input. Raises a
/// `std::runtime_error` with a Portuguese text when it cannot be read or is empty.
std::string read_password(const std::string& file);

}  // namespace pradelis::command
