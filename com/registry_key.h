#pragma once

#include <string>

#include "com/platform.h"

namespace pradelis::com {

/// An open key of the platform's registry. Paths are relative to it.
class RegistryKey {
 public:
  /// The classes of the machine (`HKEY_LOCAL_MACHINE`) or of the user (`HKEY_CURRENT_USER`).
  /// Raises the platform's code when they cannot be opened with `access`.
  RegistryKey(HKEY hive, REGSAM access);
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  ~RegistryKey();

  bool has(const std::wstring& path) const;
  /// Creates what is missing of `path` and sets a value of it; an empty name is the default value.
  void set(const std::wstring& path, const std::wstring& name, const std::wstring& value) const;
  /// Removes a key and all below it, if it is there.
  void remove_tree(const std::wstring& path) const;
  /// Removes a key if it is there and holds nothing: no key and no value.
  void remove_if_empty(const std::wstring& path) const;

 private:
  HKEY key_ = nullptr;
};

}  // namespace pradelis::com
