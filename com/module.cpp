#include "com/module.h"

namespace pradelis::com {
namespace {

HMODULE find_module(DWORD more_flags) noexcept {
  HMODULE module = nullptr;
  const auto address = reinterpret_cast<LPCWSTR>(&this_module);
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | more_flags, address, &module);
  return module;
}

}  // namespace

HMODULE this_module() noexcept { return find_module(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT); }

void pin_module() noexcept { find_module(0); }

void unpin_module() noexcept { FreeLibrary(this_module()); }

}  // namespace pradelis::com
