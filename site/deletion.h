#pragma once

#include <cstdint>
#include <string>

#include "site/context.h"

/// Deleting: the object enters the deletion register, which takes it out of all lists.
namespace pradelis::site {

struct DeletedObject {
  std::int32_t id = 0;
  std::int32_t item_class = 0;  ///< `item.cid`
  std::string name;             ///< as typed
};

/// Enters an object in the register, as deleted by the visitor now.
void enter_deletion(Context& context, const DeletedObject& object);

}  // namespace pradelis::site
