#include "tests/com/support/requests.h"

#include <sstream>

#include "values/text.h"

namespace pradelis::test {
namespace {

std::string url_decoded(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size()) {
      bytes += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      bytes += text[i] == '+' ? ' ' : text[i];
    }
  }
  return bytes;
}

/// Splits a text at the first separator; the second piece is empty when there is none.
std::pair<std::string, std::string> split_at(const std::string& text, char separator) {
  const std::size_t place = text.find(separator);
  if (place == std::string::npos) return {text, {}};
  return {text.substr(0, place), text.substr(place + 1)};
}

Fields fields_of(const std::string& text) {
  Fields fields;
  std::istringstream pieces(text);
  for (std::string piece; std::getline(pieces, piece, '&');) {
    const auto [name, value] = split_at(piece, '=');
    fields.emplace_back(url_decoded(name), url_decoded(value));
  }
  return fields;
}

PageRequest request_of(const std::string& line) {
  const auto [verb, rest] = split_at(line, ' ');
  if (verb == "APPLICATION") {
    const auto [name, value] = split_at(rest, '=');
    return {verb, name, value, {}, {}};
  }
  const auto [address, form] = split_at(rest, ' ');
  const auto [page, query] = split_at(address, '?');
  return {verb, page, "", fields_of(query), fields_of(form)};
}

}  // namespace

std::vector<PageRequest> read_requests(std::istream& file) {
  std::vector<PageRequest> requests;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty()) requests.push_back(request_of(line));
  }
  return requests;
}

std::string value_of(const Fields& fields, const std::string& name) {
  std::string joined;
  bool first = true;
  for (const auto& [key, value] : fields) {
    if (!equal_ignoring_case(key, name)) continue;
    joined += (first ? "" : ", ") + value;
    first = false;
  }
  return joined;
}

}  // namespace pradelis::test
