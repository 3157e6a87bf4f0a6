#include "com/type_library.h"

#include "com/error_info.h"
#include "com/module.h"

namespace pradelis::com {

std::wstring library_path() {
  constexpr std::size_t longest_path = 32768;
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(this_module(), path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) raise(HRESULT_FROM_WIN32(GetLastError()), "");
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    if (path.size() >= longest_path) raise(HRESULT_FROM_WIN32(ERROR_BUFFER_OVERFLOW), "");
    path.resize(path.size() * 2);
  }
}

HRESULT load_type_library(Reference<ITypeLib>& result) noexcept {
  return guarded([&] { return LoadTypeLibEx(library_path().c_str(), REGKIND_NONE, result.receiver()); });
}

HRESULT find_type_info(REFGUID id, ITypeInfo** result) noexcept {
  Reference<ITypeLib> library;
  const HRESULT code = load_type_library(library);
  return FAILED(code) ? code : library->GetTypeInfoOfGuid(id, result);
}

}  // namespace pradelis::com
