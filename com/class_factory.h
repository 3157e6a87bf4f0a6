#pragma once

#include "com/platform.h"

namespace pradelis::com {

/// Gives the class factory of one of the four classes; CLASS_E_CLASSNOTAVAILABLE for another identifier.
HRESULT class_factory(REFCLSID class_id, REFIID interface_id, void** result) noexcept;

}  // namespace pradelis::com
