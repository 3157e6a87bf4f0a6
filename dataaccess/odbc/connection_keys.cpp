#include <algorithm>

#include "dataaccess/odbc/connection_string.h"
#include "values/text.h"

namespace pradelis::dataaccess::odbc {
namespace {

char closing_of(char opening, ConnectionKeys::Quoting quoting) {
  if (opening == '{') return '}';
  const bool quotes = quoting == ConnectionKeys::Quoting::OleDb;
  return quotes && (opening == '"' || opening == '\'') ? opening : '\0';
}

/// Takes a quoted value off `rest`, which starts after the opening quote; a doubled closing quote
/// stands for itself.
std::string take_quoted(std::string_view& rest, char closing) {
  std::string value;
  while (!rest.empty()) {
    const char c = rest.front();
    rest.remove_prefix(1);
    if (c == closing) {
      if (rest.empty() || rest.front() != closing) break;
      rest.remove_prefix(1);
    }
    value += c;
  }
  return value;
}

std::string_view take_until(std::string_view& rest, char end) {
  const std::size_t at = rest.find(end);
  const std::string_view taken = rest.substr(0, at);
  rest.remove_prefix(at == std::string_view::npos ? rest.size() : at + 1);
  return taken;
}

std::string take_value(std::string_view& rest, ConnectionKeys::Quoting quoting) {
  rest = trim_left(rest);
  const char closing = rest.empty() ? '\0' : closing_of(rest.front(), quoting);
  if (closing == '\0') return std::string(trim(take_until(rest, ';')));
  rest.remove_prefix(1);
  std::string value = take_quoted(rest, closing);
  take_until(rest, ';');
  return value;
}

bool needs_braces(std::string_view value) { return value.find_first_of(";{} ") != std::string_view::npos; }

}  // namespace

ConnectionKeys::ConnectionKeys(std::string_view text, Quoting quoting) {
  while (!text.empty()) {
    const std::size_t end = text.find_first_of(";=");
    const std::string_view key = trim(text.substr(0, end));
    const bool has_value = end != std::string_view::npos && text[end] == '=';
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!has_value) continue;
    std::string value = take_value(text, quoting);
    if (key.empty() || (quoting == Quoting::Odbc && find(key) != nullptr)) continue;
    set(key, std::move(value));
  }
}

const std::string* ConnectionKeys::find(std::string_view key) const {
  const auto entry = std::ranges::find_if(
      entries_, [key](const auto& each) { return equal_ignoring_case(each.first, key); });
  return entry == entries_.end() ? nullptr : &entry->second;
}

std::string ConnectionKeys::first_of(std::initializer_list<std::string_view> keys) const {
  for (const std::string_view key : keys) {
    if (const std::string* value = find(key); value != nullptr && !value->empty()) return *value;
  }
  return {};
}

std::optional<std::string> ConnectionKeys::take(std::string_view key) {
  const std::string* value = find(key);
  if (value == nullptr) return std::nullopt;
  std::string taken = *value;
  std::erase_if(entries_, [key](const auto& each) { return equal_ignoring_case(each.first, key); });
  return taken;
}

std::optional<std::string> ConnectionKeys::take_any(std::initializer_list<std::string_view> keys) {
  std::optional<std::string> first;
  for (const std::string_view key : keys) {
    std::optional<std::string> value = take(key);
    if (!first) first = std::move(value);
  }
  return first;
}

void ConnectionKeys::set(std::string_view key, std::string value) {
  const auto entry = std::ranges::find_if(
      entries_, [key](const auto& each) { return equal_ignoring_case(each.first, key); });
  if (entry == entries_.end()) {
    entries_.emplace_back(key, std::move(value));
  } else {
    entry->second = std::move(value);
  }
}

void ConnectionKeys::set_default(std::string_view key, std::string_view value) {
  if (find(key) == nullptr) entries_.emplace_back(key, value);
}

std::string ConnectionKeys::odbc_text() const {
  std::string text;
  for (const auto& [key, value] : entries_) {
    text += concat(key, "=");
    text += needs_braces(value) ? concat("{", replace_all(value, "}", "}}"), "}") : value;
    text += ';';
  }
  return text;
}

}  // namespace pradelis::dataaccess::odbc
