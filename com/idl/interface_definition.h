#pragma once

#include <string>

namespace pradelis::com {

/// The interface definition of the whole library: enumerations, the four dual interfaces with a function
/// for each row of the classes' tables, and the four classes. The type library and the tables of
/// functions are compiled from it.
std::string interface_definition();

}  // namespace pradelis::com
