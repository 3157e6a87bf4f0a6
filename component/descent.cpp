#include "component/descent.h"

#include <algorithm>

#include "values/error.h"

namespace pradelis::component {

void Descent::enter(std::int32_t oid) {
  const bool in_it_already = std::find(way_.begin(), way_.end(), oid) != way_.end();
  if (in_it_already || (limit_ != 0 && way_.size() >= limit_)) raise(error_number::out_of_stack);
  way_.push_back(oid);
}

}  // namespace pradelis::component
