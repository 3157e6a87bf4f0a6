#include "com/text.h"

#include "values/error.h"

namespace pradelis::com {
namespace {

/// Writes the UTF-16 of `text` to `target`, which has place for as many units as `text` has bytes; gives
/// the number of units.
std::size_t widen(std::string_view text, wchar_t* target) {
  if (text.empty()) return 0;
  const int bytes = static_cast<int>(text.size());
  return static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, target, bytes));
}

bool is_ascii(std::string_view text) noexcept {
  unsigned char all = 0;
  for (const char c : text) all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
  return all < 0x80;
}

}  // namespace

std::wstring to_utf16(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  wide.resize(widen(text, wide.data()));
  return wide;
}

std::string to_utf8(std::wstring_view text) {
  constexpr std::size_t most_bytes_for_a_unit = 3;
  if (text.empty()) return {};
  std::string narrow(text.size() * most_bytes_for_a_unit, '\0');
  const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), narrow.data(),
                                        static_cast<int>(narrow.size()), nullptr, nullptr);
  narrow.resize(static_cast<std::size_t>(bytes));
  return narrow;
}

std::string from_bstr(BSTR text) {
  if (!text) return {};
  return to_utf8({text, SysStringLen(text)});
}

BSTR new_bstr(std::string_view text) {
  BSTR result = nullptr;
  if (is_ascii(text)) {
    result = SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
    if (result) widen(text, result);
  } else {
    const std::wstring wide = to_utf16(text);
    result = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  }
  if (!result) raise(error_number::out_of_memory);
  return result;
}

}  // namespace pradelis::com
