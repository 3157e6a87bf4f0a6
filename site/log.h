#pragma once

#include <string>

namespace pradelis::site {

/// Writes one line with the time to standard error. Line breaks in `text` become blanks.
void log_line(std::string text);

}  // namespace pradelis::site
