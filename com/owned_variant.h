#pragma once

#include "com/platform.h"

namespace pradelis::com {

/// A variant of the platform that is cleared when it ends.
class OwnedVariant {
 public:
  OwnedVariant() noexcept { VariantInit(&value_); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
  ~OwnedVariant() { VariantClear(&value_); }

  VARIANT& get() noexcept { return value_; }
  const VARIANT& get() const noexcept { return value_; }

  /// Hands the content over to `target`, whatever that held.
  void release_to(VARIANT& target) noexcept {
    target = value_;
    VariantInit(&value_);
  }

 private:
  VARIANT value_;
};

}  // namespace pradelis::com
