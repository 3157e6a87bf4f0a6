#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pradelis::component {

/// The way of a walk down a tree of objects, from the top to the object in which it stands. Data may
/// hold cycles, in which a walk would go on until the stack is used up: it ends with that error instead.
class Descent {
 public:
  /// For walks that use stack at each level.
  static constexpr std::size_t recursion_limit = 500;

  /// `limit`: how deep the walk may go; 0 for any depth.
  explicit Descent(std::size_t limit = 0) : limit_(limit) {}

  /// Goes down to `oid`. Raises error 28 (out of stack space) when the walk is in it already, or is as
  /// deep as it may be.
  void enter(std::int32_t oid);
  void leave() { way_.pop_back(); }
  std::size_t depth() const { return way_.size(); }

 private:
  std::size_t limit_;
  std::vector<std::int32_t> way_;
};

}  // namespace pradelis::component
