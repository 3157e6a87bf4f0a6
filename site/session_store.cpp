#include "site/session_store.h"

#include "site/secrets.h"

namespace pradelis::site {

std::string form_token(const std::string& session_name) {
  constexpr std::size_t digits = 32;
  return digest_of(session_name, "formulario").substr(0, digits);
}

}  // namespace pradelis::site
