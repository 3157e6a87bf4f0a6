#include "site/multipart.h"

#include <optional>
#include <string>

#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::string_view line_end = "\r\n";
constexpr std::size_t longest_boundary = 70;

/// Browsers write what would end a quoted name with percent signs, and nothing else.
std::string unquoted(std::string_view text) {
  return replace_all(replace_all(replace_all(text, "%22", "\""), "%0D", ""), "%0A", "");
}

/// The value of a parameter such as name="…" or name=…; nothing when it is not there.
std::optional<std::string> header_parameter(std::string_view header, std::string_view name) {
  std::size_t at = header.find(';');
  while (at < header.size()) {
    const std::size_t equals = header.find('=', at);
    if (equals == std::string_view::npos) return std::nullopt;
    const std::string_view key = trim(header.substr(at + 1, equals - at - 1));
    const bool quoted = equals + 1 < header.size() && header[equals + 1] == '"';
    const std::size_t begin = equals + (quoted ? 2 : 1);
    const std::size_t end = std::min(header.find(quoted ? '"' : ';', begin), header.size());
    if (equal_ignoring_case(key, name)) return unquoted(header.substr(begin, end - begin));
    at = header.find(';', end);
  }
  return std::nullopt;
}

std::string_view disposition(std::string_view headers) {
  constexpr std::string_view name = "content-disposition:";
  while (!headers.empty()) {
    const std::size_t end = std::min(headers.find(line_end), headers.size());
    const std::string_view line = headers.substr(0, end);
    if (equal_ignoring_case(line.substr(0, name.size()), name)) return line.substr(name.size());
    headers.remove_prefix(std::min(end + line_end.size(), headers.size()));
  }
  return {};
}

bool take_part(std::string_view headers, std::string_view content, Parameters& fields,
               std::vector<Upload>& uploads) {
  const std::string_view header = disposition(headers);
  const auto field = header_parameter(header, "name");
  if (!field) return false;
  const auto file = header_parameter(header, "filename");
  if (!file) {
    fields.add(*field, std::string(content));
  } else if (!file->empty()) {
    uploads.push_back({*field, *file, std::string(content)});
  }
  return true;
}

}  // namespace

bool parse_multipart(std::string_view content_type, std::string_view body, Parameters& fields,
                     std::vector<Upload>& uploads) {
  const auto boundary = header_parameter(content_type, "boundary");
  if (!boundary || boundary->empty() || boundary->size() > longest_boundary) return false;
  const std::string delimiter = "\r\n--" + *boundary;
  const std::string_view first = std::string_view(delimiter).substr(line_end.size());
  if (!body.starts_with(first)) return false;
  body.remove_prefix(first.size());
  while (!body.starts_with("--")) {
    if (!body.starts_with(line_end)) return false;
    const std::size_t content = body.find("\r\n\r\n");
    if (content == std::string_view::npos) return false;
    const std::size_t end = body.find(delimiter, content + 2);
    if (end == std::string_view::npos || end < content + 4) return false;
    if (!take_part(body.substr(2, content - 2), body.substr(content + 4, end - content - 4), fields,
                   uploads)) {
      return false;
    }
    body.remove_prefix(end + delimiter.size());
  }
  return true;
}

}  // namespace pradelis::site
