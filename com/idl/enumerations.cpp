#include "com/idl/enumerations.h"

#include <array>

namespace pradelis::com {

std::span<const Enumeration> enumerations() noexcept {
  static constexpr std::array<EnumerationConstant, 4> cursor_types{
      {{"adOpenForwardOnly", 0}, {"adOpenKeyset", 1}, {"adOpenDynamic", 2}, {"adOpenStatic", 3}}};
  static constexpr std::array<EnumerationConstant, 4> lock_types{{{"adLockReadOnly", 1},
                                                                  {"adLockPessimistic", 2},
                                                                  {"adLockOptimistic", 3},
                                                                  {"adLockBatchOptimistic", 4}}};
  static constexpr std::array<EnumerationConstant, 2> cursor_locations{
      {{"adUseServer", 2}, {"adUseClient", 3}}};
  static constexpr std::array<Enumeration, 3> all{{
      {"CursorType", "A9C06E19-C939-4EA4-90F2-4D0949950307", cursor_types},
      {"LockType", "836D7A1C-C18A-475C-8957-F7618DDBEE75", lock_types},
      {"CursorLocation", "28B80364-6BD2-48C3-8D21-04A1174EB3C8", cursor_locations},
  }};
  return all;
}

}  // namespace pradelis::com
