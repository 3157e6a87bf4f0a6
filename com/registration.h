#pragma once

#include "com/platform.h"

namespace pradelis::com {

/// Registers the four classes and the type library: for the machine, or, where the caller lacks the
/// right to that, for the user alone. What could be written in part is taken away again.
HRESULT register_library() noexcept;

/// Takes away everything that `register_library` wrote, for the machine and for the user. Gives S_OK too
/// when nothing was registered.
HRESULT unregister_library() noexcept;

}  // namespace pradelis::com
