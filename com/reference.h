#pragma once

#include <utility>

namespace pradelis::com {

/// Holds one reference to an object of the platform and gives it back when it ends.
template <class Interface>
class Reference {
 public:
  Reference() = default;
  Reference(const Reference& other) : pointer_(other.pointer_) { add_reference(); }
  Reference(Reference&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  Reference& operator=(Reference other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~Reference() {
    if (pointer_) pointer_->Release();
  }

  /// Takes a reference of its own to `pointer`, which may be null.
  static Reference to(Interface* pointer) {
    Reference result;
    result.pointer_ = pointer;
    result.add_reference();
    return result;
  }

  Interface* get() const noexcept { return pointer_; }
  Interface* operator->() const noexcept { return pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }

  /// The place where a function of the platform puts a reference that it hands over. Empties this first.
  Interface** receiver() {
    *this = Reference();
    return &pointer_;
  }
  /// The same for functions that are told the interface by its identifier.
  void** untyped_receiver() { return reinterpret_cast<void**>(receiver()); }

  /// Hands the reference over to the caller.
  Interface* release() noexcept { return std::exchange(pointer_, nullptr); }

 private:
  void add_reference() {
    if (pointer_) pointer_->AddRef();
  }

  Interface* pointer_ = nullptr;
};

}  // namespace pradelis::com
