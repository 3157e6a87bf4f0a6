#include "site/parameters.h"

#include <algorithm>

#include "values/text.h"

namespace pradelis::site {
namespace {

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool plain_text(std::string_view text) {
  const bool controls = std::any_of(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\r' && c != '\t') || c == 0x7f;
  });
  return !controls && is_valid_utf8(text);
}

}  // namespace

std::string url_decode(std::string_view text, bool form) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && hex_digit(text[i + 1]) >= 0 && hex_digit(text[i + 2]) >= 0) {
      plain += static_cast<char>(hex_digit(text[i + 1]) * 16 + hex_digit(text[i + 2]));
      i += 2;
    } else {
      plain += form && text[i] == '+' ? ' ' : text[i];
    }
  }
  return plain;
}

std::string url_encode(std::string_view text) {
  static constexpr std::string_view digits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (letter || std::string_view("-._~").find(c) != std::string_view::npos) {
      encoded += c;
    } else {
      encoded += '%';
      encoded += digits[byte >> 4U];
      encoded += digits[byte & 15U];
    }
  }
  return encoded;
}

Parameters Parameters::parse(std::string_view encoded) {
  Parameters parameters;
  for (const std::string_view pair : split(encoded, '&')) {
    if (pair.empty()) continue;
    const std::size_t equals = std::min(pair.find('='), pair.size());
    const std::string_view value = equals < pair.size() ? pair.substr(equals + 1) : std::string_view();
    parameters.values_.emplace_back(url_decode(pair.substr(0, equals), true), url_decode(value, true));
  }
  return parameters;
}

const std::string& Parameters::get(std::string_view name) const {
  static const std::string none;
  const auto found =
      std::find_if(values_.begin(), values_.end(), [&](const auto& pair) { return pair.first == name; });
  return found == values_.end() ? none : found->second;
}

std::vector<std::string> Parameters::all(std::string_view name) const {
  std::vector<std::string> found;
  for (const auto& [key, value] : values_) {
    if (key == name) found.push_back(value);
  }
  return found;
}

std::string Parameters::encode_without(std::initializer_list<std::string_view> names) const {
  std::string encoded;
  for (const auto& [name, value] : values_) {
    if (value.empty() || std::find(names.begin(), names.end(), name) != names.end()) continue;
    if (!encoded.empty()) encoded += '&';
    encoded += url_encode(name) + "=" + url_encode(value);
  }
  return encoded;
}

bool Parameters::well_formed() const {
  return std::all_of(values_.begin(), values_.end(),
                     [](const auto& pair) { return plain_text(pair.first) && plain_text(pair.second); });
}

}  // namespace pradelis::site
