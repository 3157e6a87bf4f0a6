#include "values/variant.h"

#include "values/error.h"

namespace pradelis {

void raise_type_mismatch() { raise(error_number::type_mismatch); }

}  // namespace pradelis
