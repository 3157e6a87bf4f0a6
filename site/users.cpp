#include "site/users.h"

#include <string>

#include "component/crm.h"
#include "site/identifiers.h"
#include "site/rows.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::site {

UserPtr read_user(component::CRM& crm, User user, std::int32_t team_version) {
  constexpr std::size_t visible_users = 4;
  constexpr std::int16_t groups_below = 3;
  const auto groups = crm.cGrupoUsuarios();
  user.information.get<Variant::Array>().at(visible_users) = groups->fUsuariosVisiveis(user.person);
  user.groups = parse_identifiers(groups->fGruposVisiveis(user.person, groups_below)).value();
  user.team_version = team_version;
  return std::make_shared<const User>(std::move(user));
}

bool is_live(component::CRM& crm, const User& user) {
  constexpr std::size_t account = 2;
  const std::int32_t id = to_int32(user.information.get<Variant::Array>().at(account));
  return !single_value(crm, concat("select oid from usuario_r where oid = ", id)).is_null();
}

void end_usage_session(component::CRM& crm, const User& user) {
  if (user.usage_session) end_usage_session(crm, *user.usage_session);
}

void end_usage_session(component::CRM& crm, std::int32_t usage_session) {
  try {
    crm.Finalizar_Sessao_Uso(usage_session);
  } catch (const Error& error) {
    if (error.number() != error_number::no_current_row) throw;
  }
}

}  // namespace pradelis::site
