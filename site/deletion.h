#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "site/context.h"
#include "site/router.h"

/// Deleting: objects enter the deletion register, which takes them out of all lists.
namespace pradelis::site {

struct DeletedObject {
  std::int32_t id = 0;
  std::int32_t item_class = 0;  ///< `item.cid`
  std::string name;             ///< as typed
};

/// Enters an object in the register, as deleted by the visitor now.
void enter_deletion(Context& context, const DeletedObject& object);

/// What is deleted together, and what is said of it before.
struct Deletion {
  std::vector<DeletedObject> objects;  ///< the last one is what was asked for, the others hang below it
  std::vector<std::string> details;
  std::string refusal;  ///< why it cannot be; empty when it can
  std::string title, area;
  std::vector<Link> trail;
  std::string after;  ///< where it leads to

  void add(const std::vector<DeletedObject>& more) {
    objects.insert(objects.end(), more.begin(), more.end());
  }
};

/// The page that asks, and the one that deletes unless something has been put below meanwhile.
void ask_deletion(Context& context, const Deletion& deletion);
void carry_out_deletion(Context& context, Deletion (*read)(Context&));

/// Adds both for an address. `read` gives what is deleted there, and refuses whoever may not.
template <Deletion (*read)(Context&)>
void add_deletion(Router& router, const char* address) {
  router.get(address, [](Context& context) { ask_deletion(context, read(context)); });
  router.post(address, [](Context& context) { carry_out_deletion(context, read); });
}

}  // namespace pradelis::site
