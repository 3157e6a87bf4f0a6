#include "dataaccess/odbc/wide_text.h"

#include <cstdint>
#include <limits>

#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess::odbc {
namespace {

constexpr std::uint32_t replacement = 0xFFFD;

/// A character of a text and the number of its bytes; `valid` is false for a byte that starts none.
struct Character {
  std::uint32_t code = replacement;
  std::size_t bytes = 1;
  bool valid = false;
};

std::size_t sequence_length(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  return 0;
}

/// The character of more than one byte at `position`.
Character long_character(std::string_view utf8, std::size_t position) {
  const auto lead = static_cast<unsigned char>(utf8[position]);
  const std::size_t length = sequence_length(lead);
  if (length == 0 || !is_valid_utf8(utf8.substr(position, length))) return {};
  std::uint32_t code = lead & (0xFFu >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    code = code << 6 | (static_cast<unsigned char>(utf8[position + i]) & 0x3Fu);
  }
  return {code, length, true};
}

/// Writes one character to `out`; gives the place after it.
SQLWCHAR* put_units(SQLWCHAR* out, std::uint32_t code) {
  if (code < 0x10000) {
    *out++ = static_cast<SQLWCHAR>(code);
    return out;
  }
  code -= 0x10000;
  *out++ = static_cast<SQLWCHAR>(0xD800 + (code >> 10));
  *out++ = static_cast<SQLWCHAR>(0xDC00 + (code & 0x3FF));
  return out;
}

char* put_bytes(char* out, std::uint32_t code) {
  const auto put = [&out](std::uint32_t byte) { *out++ = static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6);
    put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12);
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18);
    put(0x80 | (code >> 12 & 0x3F));
    put(0x80 | (code >> 6 & 0x3F));
    put(0x80 | (code & 0x3F));
  }
  return out;
}

bool is_high_surrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool is_low_surrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace

bool to_wide(std::string_view utf8, WideText& wide) {
  wide.resize(utf8.size());  // a text has at least as many bytes as units
  SQLWCHAR* out = wide.data();
  bool valid = true;
  for (std::size_t i = 0; i < utf8.size();) {
    if (const auto byte = static_cast<unsigned char>(utf8[i]); byte < 0x80) {
      *out++ = byte;
      ++i;
      continue;
    }
    const Character character = long_character(utf8, i);
    valid = valid && character.valid;
    out = put_units(out, character.code);
    i += character.bytes;
  }
  wide.resize(static_cast<std::size_t>(out - wide.data()));
  return valid;
}

WideText wide_text(std::string_view utf8) {
  WideText wide;
  to_wide(utf8, wide);
  return wide;
}

void append_utf8(std::string& utf8, const SQLWCHAR* units, std::size_t length) {
  const std::size_t before = utf8.size();
  utf8.resize(before + length * 3);  // no unit needs more than three bytes
  char* out = utf8.data() + before;
  for (std::size_t i = 0; i < length; ++i) {
    const std::uint32_t unit = static_cast<std::uint16_t>(units[i]);
    if (unit < 0x80) {
      *out++ = static_cast<char>(unit);
    } else if (is_high_surrogate(unit) && i + 1 < length && is_low_surrogate(units[i + 1])) {
      out = put_bytes(out, 0x10000 + ((unit - 0xD800) << 10) + (units[i + 1] - 0xDC00u));
      ++i;
    } else {
      out = put_bytes(out, is_high_surrogate(unit) || is_low_surrogate(unit) ? replacement : unit);
    }
  }
  utf8.resize(static_cast<std::size_t>(out - utf8.data()));
}

std::string utf8_text(const SQLWCHAR* units, std::size_t length) {
  std::string utf8;
  append_utf8(utf8, units, length);
  return utf8;
}

SQLINTEGER unit_count(const WideText& text) {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<SQLINTEGER>::max())) {
    raise(error_number::out_of_memory);
  }
  return static_cast<SQLINTEGER>(text.size());
}

}  // namespace pradelis::dataaccess::odbc
