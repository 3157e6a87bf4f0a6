#include "component/session_user.h"

#include <utility>

#include "component/thread_state.h"
#include "values/error.h"

namespace pradelis::component {

Variant visible_users_of_session() {
  constexpr std::size_t visible_users = 4;
  GetSession();
  Variant information = thread_state().session->Value("InformacoesUsuario");
  Variant::Array& elements = information.get<Variant::Array>();
  if (elements.size() <= visible_users) raise(error_number::subscript_out_of_range);
  return std::move(elements[visible_users]);
}

}  // namespace pradelis::component
