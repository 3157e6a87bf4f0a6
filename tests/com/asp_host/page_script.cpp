#include "tests/com/asp_host/page_script.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "com/text.h"

namespace pradelis::test {
namespace {

/// A piece of text without line ends, as an expression of the script.
std::wstring quoted(const std::wstring& text) {
  std::wstring result = L"\"";
  for (const wchar_t c : text) result += c == L'"' ? L"\"\"" : std::wstring(1, c);
  return result + L"\"";
}

std::wstring write_text(const std::wstring& text) {
  std::wstring script;
  std::wstring line;
  const auto write_line = [&](const wchar_t* line_end) {
    if (!line.empty() || *line_end) script += L"Response.Write " + quoted(line) + line_end + L"\n";
    line.clear();
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') {
      ++i;
      write_line(L" & vbCrLf");
    } else if (text[i] == L'\n') {
      write_line(L" & vbLf");
    } else {
      line += text[i];
    }
  }
  write_line(L"");
  return script;
}

std::wstring script_of_tag(const std::wstring& tag) {
  if (tag.empty() || tag[0] == L'@') return {};
  if (tag[0] == L'=') return L"Response.Write " + tag.substr(1) + L"\n";
  return tag + L"\n";
}

}  // namespace

std::wstring script_of_page(const std::wstring& page) {
  std::wstring script;
  std::size_t place = 0;
  for (;;) {
    const std::size_t begin = page.find(L"<%", place);
    script += write_text(page.substr(place, begin - place));
    if (begin == std::wstring::npos) return script;
    const std::size_t end = page.find(L"%>", begin);
    if (end == std::wstring::npos) throw std::runtime_error("a tag of the page has no end");
    script += script_of_tag(page.substr(begin + 2, end - begin - 2));
    place = end + 2;
  }
}

std::wstring read_page(const std::wstring& folder, const std::wstring& name) {
  const std::wstring include = L"<!--#include file=\"";
  std::ifstream file(com::to_utf8(folder + L"\\" + name), std::ios::binary);
  if (!file) throw std::runtime_error("no page " + com::to_utf8(name));
  std::ostringstream content;
  content << file.rdbuf();
  std::wstring page = com::to_utf16(content.str());
  for (std::size_t begin = page.find(include); begin != std::wstring::npos; begin = page.find(include)) {
    const std::size_t name_begin = begin + include.size();
    const std::size_t name_end = page.find(L'"', name_begin);
    const std::size_t end = page.find(L"-->", name_end) + 3;
    page.replace(begin, end - begin, read_page(folder, page.substr(name_begin, name_end - name_begin)));
  }
  return page;
}

}  // namespace pradelis::test
