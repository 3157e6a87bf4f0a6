#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/session_user.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

std::string state_condition(bool open, bool closed, bool lost) {
  std::string condition = " ";
  const auto alternative = [&condition](std::string_view test) {
    if (!trim(condition).empty()) condition += " or ";
    condition += test;
  };
  if (open) alternative(" fechamento is null");
  if (closed) alternative(" valorfechamento is not null ");
  if (lost) alternative(" rmotivo is not null ");
  return condition;
}

}  // namespace

std::string CRM::String_Negocio_Vendedor(std::int32_t OidVendedor, const Variant& OIDEMPRESA, bool ABERTO,
                                         bool FECHADO, bool Perdido, std::int16_t tipoBusca) {
  return reporting("String_Negocio_Vendedor", [&] {
    if (OidVendedor != 0) {
      sValor = "";
      sValor = cGrupoUsuarios()->fUsuariosVisiveis(OidVendedor, tipoBusca);
    } else {
      sValor = visible_users_of_session();
    }
    std::string sql = concat("select oid from crm_pos_negocio where rvendedor in (", sValor, ") ");
    if (OIDEMPRESA.is_null()) {
      sql += concat(" and RPESSOA in (", String_Empresa_Vendedor(OidVendedor, true), ") ");
    } else {
      sql += concat(" and RPESSOA=", OIDEMPRESA, " ");
    }
    sql += concat(" and (", state_condition(ABERTO, FECHADO, Perdido), ")");
    return sql;
  });
}

}  // namespace pradelis::component
