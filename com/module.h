#pragma once

#include "com/platform.h"

namespace pradelis::com {

/// The loaded file of this library.
HMODULE this_module() noexcept;

/// Keeps the library's file loaded, beyond the loader's own count, until `unpin_module`.
void pin_module() noexcept;
void unpin_module() noexcept;

}  // namespace pradelis::com
