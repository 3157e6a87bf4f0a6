#include "dataaccess/trace.h"

#include <array>
#include <atomic>
#include <charconv>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "dataaccess/iso_date.h"
#include "dataaccess/tokens.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

std::atomic<bool> trace_is_on = false;
std::mutex trace_mutex;
std::ofstream trace_file;  // guarded by trace_mutex

constexpr std::size_t longest_bytes_shown = 32;

std::string local_time() {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  std::tm parts{};
#ifdef _WIN32
  localtime_s(&parts, &seconds);
#else
  localtime_r(&seconds, &parts);
#endif
  std::array<char, 32> text{};
  const std::size_t size = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts);
  const auto milliseconds =
      std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
  const std::string digits = std::to_string(1000 + milliseconds);
  return std::string(text.data(), size).append(".").append(digits, 1);
}

std::string milliseconds_since(std::chrono::steady_clock::time_point start) {
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  std::array<char, 32> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), taken.count(), std::chars_format::fixed, 3);
  return {text.data(), end.ptr};
}

void append_on_one_line(std::string& line, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '\n':
        line += "\\n";
        break;
      case '\r':
        line += "\\r";
        break;
      case '\t':
        line += "\\t";
        break;
      default:
        line += c;
    }
  }
}

void append_bytes(std::string& text, std::span<const std::byte> bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  text += "x'";
  for (const std::byte byte : bytes.first(std::min(bytes.size(), longest_bytes_shown))) {
    text += digits[std::to_integer<unsigned>(byte) >> 4];
    text += digits[std::to_integer<unsigned>(byte) & 15];
  }
  text += '\'';
  if (bytes.size() > longest_bytes_shown) {
    text.append(" /* … ").append(std::to_string(bytes.size())).append(" bytes */");
  }
}

template <class Number>
void append_number(std::string& text, Number number) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  text.append(digits.data(), end.ptr);
}

void append_literal(std::string& text, const Cell& value) {
  switch (value.kind) {
    case CellKind::Null:
      text += "null";
      break;
    case CellKind::Boolean:
    case CellKind::Integer:
      append_number(text, value.integer);
      break;
    case CellKind::Real:
      append_number(text, value.real);
      break;
    case CellKind::Decimal:
      text += value.text();
      break;
    case CellKind::Date:
    case CellKind::Day: {
      std::array<char, iso_date_size> date{};
      text.append("'").append(write_iso_date({value.real}, value.kind == CellKind::Day, date.data()));
      text += '\'';
      break;
    }
    case CellKind::Text:
      text.append("'").append(replace_all(value.text(), "'", "''")).append("'");
      break;
    case CellKind::Bytes:
      append_bytes(text, value.bytes());
      break;
  }
}

}  // namespace

void set_trace_file(const std::string& path) {
  const std::lock_guard lock(trace_mutex);
  trace_is_on = false;
  trace_file.close();
  trace_file.clear();
  if (path.empty()) return;
  trace_file.open(std::filesystem::path(std::u8string(path.begin(), path.end())),
                  std::ios::app | std::ios::binary);
  if (!trace_file) {
    raise(error_number::database_failed,
          concat("O arquivo de rastreamento ", path, " não pode ser gravado."));
  }
  trace_is_on = true;
}

bool tracing() noexcept { return trace_is_on.load(std::memory_order_relaxed); }

std::string with_values(std::string_view sql, std::span<const Cell> values) {
  std::string text;
  std::size_t copied = 0;
  std::size_t used = 0;
  Tokens tokens(sql);
  for (Token token = tokens.next(); token.kind != TokenKind::End; token = tokens.next()) {
    if (token.kind != TokenKind::Marker || used == values.size()) continue;
    const std::size_t position = tokens.position(token);
    text.append(sql, copied, position - copied);
    append_literal(text, values[used++]);
    copied = position + 1;
  }
  return text.append(sql, copied);
}

TraceLine::TraceLine(std::string_view statement) {
  if (!tracing()) return;
  statement_.emplace(statement);
  start_ = std::chrono::steady_clock::now();
}

TraceLine::TraceLine(std::string_view sql, std::span<const Cell> values) {
  if (!tracing()) return;
  statement_ = with_values(sql, values);
  start_ = std::chrono::steady_clock::now();
}

TraceLine::~TraceLine() {
  if (!statement_) return;
  try {
    std::string line = local_time();
    line.append("\t").append(milliseconds_since(start_)).append("\t");
    if (rows_) append_number(line, *rows_);
    line += '\t';
    append_on_one_line(line, *statement_);
    line += '\n';
    const std::lock_guard lock(trace_mutex);
    if (trace_file.is_open()) trace_file << line << std::flush;
  } catch (const std::exception&) {
    // A trace that cannot be written must not make the statement fail.
  }
}

}  // namespace pradelis::dataaccess
