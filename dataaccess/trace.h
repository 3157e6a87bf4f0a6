#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "dataaccess/cell.h"

namespace pradelis::dataaccess {

/// Writes, from now on, each statement of the process that goes to a database to the end of this file,
/// one line each, of four fields with tabs between them: local time (ISO, with milliseconds),
/// milliseconds taken, rows read or changed (empty where not known), and the text as the component
/// built it, with line breaks and tabs written "\n" and "\t". Statements that recordsets make stand
/// there with their values in place; bytes are shortened. An empty path ends the trace.
/// Raises -2147467259 when the file cannot be written.
void set_trace_file(const std::string& path);

/// Whether a trace is being written.
bool tracing() noexcept;

/// `sql` with its "?" replaced by the values as literals: the text that a trace shows for it.
std::string with_values(std::string_view sql, std::span<const Cell> values);

/// One line of the trace: made before a statement runs, written when it ends, also by a failure.
/// Costs nothing while no trace is written.
class TraceLine {
 public:
  explicit TraceLine(std::string_view statement);
  TraceLine(std::string_view sql, std::span<const Cell> values);
  TraceLine(const TraceLine&) = delete;
  TraceLine& operator=(const TraceLine&) = delete;
  ~TraceLine();

  void set_rows(std::int64_t rows) noexcept { rows_ = rows; }

 private:
  std::optional<std::string> statement_;
  std::optional<std::int64_t> rows_;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace pradelis::dataaccess
