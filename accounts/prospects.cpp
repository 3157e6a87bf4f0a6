#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/descent.h"
#include "component/recordsets.h"
#include "component/session_user.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

/// Whether a value counts as the empty text.
bool is_empty_text(const Variant& value) {
  return value.is_empty() || (value.is(VariantType::Text) && value.get<std::string>().empty());
}

}  // namespace

Variant CRM::Alterar_Vendedor_Prospect(const Variant& NOVOVENDEDOR, const Variant& OIDProspect) {
  return reporting("Alterar_Vendedor_Prospect", [&] {
    execute(concat("update item set criadopor = ", NOVOVENDEDOR, " where oid = ", OIDProspect));
    return Variant("0");
  });
}

Variant CRM::String_Empresa_Vendedor(std::int32_t OidVendedor, bool Cliente) {
  return reporting("String_Empresa_Vendedor", [&] {
    const Variant owners = OidVendedor != 0 ? Variant(cGrupoUsuarios()->fUsuariosVisiveis(OidVendedor, 3))
                                            : visible_users_of_session();
    std::string sql = concat("select oid from item where ((criadopor in (", owners,
                             ") and oid in (select ritem from classificacao where RCATEGORIA=2127))");
    if (Cliente) sql += " or (oid in (select ritem from classificacao where RCATEGORIA=2121))";
    sql += ")";
    return Variant(sql);
  });
}

std::string CRM::String_filho(const Variant& OID) {
  return reporting("String_Filho", rs, [&] {
    Variant node = OID;
    Descent descent;
    for (;;) {
      rs = open_snapshot(concat("select oid from item where rescopo = ", node,
                                " and (oid in  (select oid from vendedor_r) or oid in  (select oid from "
                                "filial_r))"));
      if (rs->Eof()) break;
      // Only the first child is followed: all levels share one recordset.
      const std::int32_t child = to_int32(rs->value("oid"));
      descent.enter(child);
      node = child;
    }
    sValor = is_empty_text(sValor) ? node : Variant(concat(sValor, ",", node));
    release(rs);
    return descent.depth() == 0 ? std::string("0") : std::string();
  });
}

}  // namespace pradelis::component
