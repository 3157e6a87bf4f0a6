#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pradelis::dataaccess::sqlite {

struct Options {
  std::string path;
  bool create = false;
  std::string synchronous = "FULL";
  std::optional<int> busy_milliseconds;
};

/// Whether a connection string is of this driver.
bool is_connection_string(std::string_view text) noexcept;

/// Takes a connection string apart. Raises -2147467259 for an option that does not exist.
Options read_connection_string(std::string_view text);

}  // namespace pradelis::dataaccess::sqlite
