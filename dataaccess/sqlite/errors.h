#pragma once

#include <cstdint>
#include <string_view>

struct sqlite3;

namespace pradelis::dataaccess::sqlite {

/// The number that a failure of SQLite has here. `code` may be an extended one.
std::int32_t number_for(int code, std::string_view message) noexcept;

/// Whether a failure means that the connection is of no more use.
bool means_lost(int code) noexcept;

/// Raises the connection's last failure.
[[noreturn]] void raise_failure(sqlite3* database, int code);

}  // namespace pradelis::dataaccess::sqlite
