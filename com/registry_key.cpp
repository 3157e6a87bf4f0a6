#include "com/registry_key.h"

#include "values/error.h"

namespace pradelis::com {
namespace {

void check(LSTATUS status) {
  if (status != ERROR_SUCCESS) raise(HRESULT_FROM_WIN32(static_cast<DWORD>(status)), "");
}

void check_removal(LSTATUS status) {
  if (status != ERROR_FILE_NOT_FOUND) check(status);
}

class OpenKey {
 public:
  OpenKey() = default;
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;
  ~OpenKey() {
    if (key) RegCloseKey(key);
  }

  HKEY key = nullptr;
};

}  // namespace

RegistryKey::RegistryKey(HKEY hive, REGSAM access) {
  check(RegCreateKeyExW(hive, L"Software\\Classes", 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                        &key_, nullptr));
}

RegistryKey::~RegistryKey() { RegCloseKey(key_); }

bool RegistryKey::has(const std::wstring& path) const {
  OpenKey found;
  return RegOpenKeyExW(key_, path.c_str(), 0, KEY_READ, &found.key) == ERROR_SUCCESS;
}

void RegistryKey::set(const std::wstring& path, const std::wstring& name, const std::wstring& value) const {
  OpenKey target;
  check(RegCreateKeyExW(key_, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr,
                        &target.key, nullptr));
  const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  check(RegSetValueExW(target.key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                       bytes));
}

void RegistryKey::remove_tree(const std::wstring& path) const {
  check_removal(RegDeleteTreeW(key_, path.c_str()));
}

void RegistryKey::remove_if_empty(const std::wstring& path) const {
  DWORD children = 0;
  DWORD values = 0;
  {
    OpenKey parent;
    if (RegOpenKeyExW(key_, path.c_str(), 0, KEY_READ, &parent.key) != ERROR_SUCCESS) return;
    check(RegQueryInfoKeyW(parent.key, nullptr, nullptr, nullptr, &children, nullptr, nullptr, &values,
                           nullptr, nullptr, nullptr, nullptr));
  }
  if (children == 0 && values == 0) check_removal(RegDeleteKeyW(key_, path.c_str()));
}

}  // namespace pradelis::com
