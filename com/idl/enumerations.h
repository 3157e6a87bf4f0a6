#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace pradelis::com {

struct EnumerationConstant {
  std::string_view name;
  std::int32_t value;
};

struct Enumeration {
  std::string_view name;  ///< as the classes' tables call it
  std::string_view id;
  std::span<const EnumerationConstant> constants;
};

/// The enumerations that parameters of the four classes have as their types.
std::span<const Enumeration> enumerations() noexcept;

}  // namespace pradelis::com
