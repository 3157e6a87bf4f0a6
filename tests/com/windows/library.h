#pragma once

#include <gtest/gtest.h>

#include <string>

#include "com/identifiers.h"
#include "com/platform.h"
#include "com/text.h"

namespace pradelis::test {

inline constexpr wchar_t library_name[] = L"pradelis.dll";

/// Where the registered library lies.
inline std::wstring registered_path() {
  const std::wstring key =
      L"CLSID\\{" + com::to_utf16(com::class_identifiers.front().class_id) + L"}\\InprocServer32";
  wchar_t path[MAX_PATH] = L"";
  DWORD bytes = sizeof path;
  EXPECT_EQ(RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, path, &bytes),
            ERROR_SUCCESS);
  return path;
}

/// The registered library, loaded while this lives.
class Library {
 public:
  Library() : module_(LoadLibraryW(registered_path().c_str())) { EXPECT_NE(module_, nullptr); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { FreeLibrary(module_); }

  /// Calls an exported function without parameters.
  HRESULT call(const char* name) const {
    using Function = HRESULT(STDAPICALLTYPE*)();
    const FARPROC address = GetProcAddress(module_, name);
    return address ? reinterpret_cast<Function>(reinterpret_cast<void*>(address))() : E_NOTIMPL;
  }

 private:
  HMODULE module_;
};

}  // namespace pradelis::test
