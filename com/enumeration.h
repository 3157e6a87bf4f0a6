#pragma once

#include "com/com_object.h"

namespace pradelis::com {

/// Puts a new enumeration of a collection's elements into `result`.
HRESULT enumerate(ComObject& collection, VARIANT* result);

}  // namespace pradelis::com
