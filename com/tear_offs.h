#pragma once

#include "com/com_object.h"

namespace pradelis::com {

/// The interfaces of an object beside its own: ISupportErrorInfo, and IProvideClassInfo for the four
/// classes. Each is a small object that leads back to its owner for everything else.
HRESULT query_tear_off(ComObject& owner, REFIID interface_id, void** result) noexcept;

}  // namespace pradelis::com
