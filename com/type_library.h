#pragma once

#include <string>

#include "com/platform.h"
#include "com/reference.h"

namespace pradelis::com {

/// Full path of this library's file. Raises the platform's code when it cannot be told.
std::wstring library_path();

/// The type library that is part of this library's file.
HRESULT load_type_library(Reference<ITypeLib>& result) noexcept;

/// What the type library says of an interface or a class.
HRESULT find_type_info(REFGUID id, ITypeInfo** result) noexcept;

}  // namespace pradelis::com
