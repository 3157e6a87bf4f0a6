#pragma once

#include "values/variant.h"

namespace pradelis::component {

/// The list of users whose records the logged-in user may see, as the web session keeps it in element 4
/// of "InformacoesUsuario". Raises error 13 when the session holds no array there, error 9 when the
/// array is too short, and what fetching the session raises.
Variant visible_users_of_session();

}  // namespace pradelis::component
