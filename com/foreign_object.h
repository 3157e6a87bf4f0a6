#pragma once

#include <initializer_list>
#include <string_view>

#include "com/platform.h"
#include "com/reference.h"
#include "values/variant.h"

namespace pradelis::com {

/// An object of somebody else, called by name. It lives on the thread that received it.
class ForeignObject : public Object {
 public:
  explicit ForeignObject(Reference<IDispatch> dispatch) : dispatch_(std::move(dispatch)) {}

  IDispatch* dispatch() const noexcept { return dispatch_.get(); }

  /// Identifier of a member. Raises error 438 when there is none of this name.
  DISPID id_of(const wchar_t* name) const;

  /// Reads a property or runs a method. Raises what the object raises.
  Variant read(DISPID member, std::initializer_list<std::string_view> arguments = {}) const;

  /// Value of the default member.
  Variant default_value() const { return read(DISPID_VALUE); }

 private:
  Reference<IDispatch> dispatch_;
};

}  // namespace pradelis::com
