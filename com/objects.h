#pragma once

#include "com/platform.h"
#include "values/object.h"

namespace pradelis::com {

/// A reference, which the receiver releases, to `object` as callers of the platform see it: always the
/// same one while somebody holds it. Somebody else's object comes back as itself. Null for null.
IDispatch* dispatch_of(const ObjectPtr& object);

/// The object behind a reference of the platform: the component's own, or a `ForeignObject`. Null for
/// null. Raises error 13 for an object that cannot be called by name.
ObjectPtr object_from(IUnknown* reference);

}  // namespace pradelis::com
