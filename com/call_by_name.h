#pragma once

#include <span>

#include "com/com_object.h"

namespace pradelis::com {

/// Identifiers of a member (the first name) and of its parameters (the others), as a call by name takes
/// them. Gives DISP_E_UNKNOWNNAME when one is not known; its identifier is DISPID_UNKNOWN then.
HRESULT find_ids(const automation::ClassTable& table, std::span<const LPOLESTR> names, DISPID* ids);

/// A call by name. Arguments that refer to a caller's variable are read from there, and what the method
/// writes back goes there, also when it fails. Raises what `automation::invoke` raises.
HRESULT call_by_name(ComObject& target, DISPID member, WORD flags, const DISPPARAMS& parameters,
                     VARIANT* result);

}  // namespace pradelis::com
