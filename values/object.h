#pragma once

#include <memory>

namespace pradelis {

/// Base of everything that a page can hold a reference to: the four component classes, recordsets,
/// fields, connections and the objects of the data-access library. Objects are apartment-threaded:
/// an object is used and released on the thread that created it, so nothing in it is locked.
class Object : public std::enable_shared_from_this<Object> {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;
};

using ObjectPtr = std::shared_ptr<Object>;

}  // namespace pradelis
