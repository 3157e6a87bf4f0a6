#include "tests/com/support/page_text.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace pradelis::test {
namespace {

/// A piece of text without line ends, as an expression of the script.
std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"') result += c;
    result += c;
  }
  return result + "\"";
}

std::string write_text(const std::string& text) {
  std::string script;
  std::string line;
  const auto write_line = [&](std::string_view line_end) {
    if (!line.empty() || !line_end.empty()) {
      script.append("Response.Write ").append(quoted(line)).append(line_end).append("\n");
    }
    line.clear();
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
      ++i;
      write_line(" & vbCrLf");
    } else if (text[i] == '\n') {
      write_line(" & vbLf");
    } else {
      line += text[i];
    }
  }
  write_line("");
  return script;
}

std::string script_of_tag(const std::string& tag) {
  if (tag.starts_with('@')) return {};
  if (tag.starts_with('=')) return "Response.Write " + tag.substr(1) + "\n";
  return tag + "\n";
}

}  // namespace

std::string read_page(const std::string& folder, const std::string& name) {
  constexpr std::string_view include = "<!--#include file=\"";
  std::ifstream file(folder + "/" + name, std::ios::binary);
  if (!file) throw std::runtime_error("no page " + name);
  std::ostringstream content;
  content << file.rdbuf();
  std::string page = content.str();
  for (std::size_t begin = page.find(include); begin != std::string::npos; begin = page.find(include)) {
    const std::size_t name_begin = begin + include.size();
    const std::size_t name_end = page.find('"', name_begin);
    const std::size_t end = page.find("-->", name_end) + 3;
    page.replace(begin, end - begin, read_page(folder, page.substr(name_begin, name_end - name_begin)));
  }
  return page;
}

std::vector<PagePart> parts_of(const std::string& page) {
  std::vector<PagePart> parts;
  std::size_t place = 0;
  for (;;) {
    const std::size_t begin = page.find("<%", place);
    if (const std::string text = page.substr(place, begin - place); !text.empty())
      parts.push_back({false, text});
    if (begin == std::string::npos) return parts;
    const std::size_t end = page.find("%>", begin);
    if (end == std::string::npos) throw std::runtime_error("a tag of the page has no end");
    parts.push_back({true, page.substr(begin + 2, end - begin - 2)});
    place = end + 2;
  }
}

std::string script_of(const std::vector<PagePart>& page) {
  constexpr std::string_view explicitly = " Option Explicit ";
  std::string first;
  std::string script;
  for (const PagePart& part : page) {
    if (part.is_script && part.text == explicitly) {
      first = part.text + "\n";
    } else {
      script += part.is_script ? script_of_tag(part.text) : write_text(part.text);
    }
  }
  return first + script;
}

}  // namespace pradelis::test
