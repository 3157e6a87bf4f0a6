#pragma once

#include <cstddef>
#include <vector>

#include "automation/invoke.h"

namespace pradelis::automation {

/// The arguments of one call, in the form in which a member's invoker takes them. It works on the
/// caller's own variables where they have the right type, and on temporaries elsewhere.
class CallFrame {
 public:
  /// Raises what `invoke` says of arguments; the caller's variables are as they were then.
  CallFrame(const Member& member, const Arguments& arguments);

  /// Calls the member. The caller's variables receive what it wrote, also when it fails.
  Variant call(Object& object);

 private:
  void place(std::size_t index, Variant& given);
  void place_default(std::size_t index);
  void temporary(std::size_t index, Variant value);
  void write_back() noexcept;

  const Member& member_;
  std::vector<Variant*> arguments_;  ///< null while no argument is placed
  std::vector<Variant> temporaries_;
  std::vector<Variant*> receivers_;  ///< the caller's variable for a temporary that is written back
};

}  // namespace pradelis::automation
