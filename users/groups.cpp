#include <cstdint>
#include <string>

#include "component/error_reporting.h"
#include "component/grupo_usuarios.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

constexpr std::string_view source_prefix = "Pradelis.GrupoUsuarios.";
constexpr std::int32_t group_class = 18;
constexpr std::int32_t group_registration = 26210;
constexpr std::int32_t this_application = 20090;

/// Deletes the item of the present row, whose identifier is `oid`.
void delete_item(dataaccess::Recordset& item, std::int32_t oid, std::int32_t responsible) {
  shared_base().ExcluirItem(concat(item.value("nome")), concat(item.value("codigo")), responsible, now(),
                            this_application, to_int32(item.value("cid")), oid, 0);
}

}  // namespace

bool GrupoUsuarios::Cadastrar_Grupo(std::int32_t pRespCadastro, const std::string& pNomeGRP,
                                    std::int32_t pOidGRPPai, const std::string& pOBS) {
  return reporting(source_prefix, "Cadastrar_Grupo", [&] {
    const std::int32_t oid =
        shared_base().IncluirItem(pRespCadastro, pNomeGRP, group_class, 7, pOidGRPPai, Variant::missing(),
                                  Variant::missing(), true, pOBS, "", 0);
    shared_base().RegistrarItem(group_registration, 0, oid);
    return true;
  });
}

bool GrupoUsuarios::Alterar_Grupo(std::int32_t pOID, std::int32_t pRespCadastro, const std::string& pNomeGRP,
                                  std::int32_t pOidGRPPai, const std::string& pOBS) {
  return reporting(source_prefix, "Alterar_Grupo", [&] {
    shared_base().AlterarItem(pOID, pRespCadastro, pNomeGRP, pOidGRPPai, Variant::missing(), pOBS,
                              Variant::missing());
    return true;
  });
}

bool GrupoUsuarios::Excluir_Grupo(std::int32_t pOID, std::int32_t pResponsavel) {
  return reporting(source_prefix, "Excluir_Grupo", [&] {
    for (std::string below = fSubGrupos(pOID, 2); !below.empty(); below = fSubGrupos(pOID, 2)) {
      delete_leaves(below, pResponsavel);
    }
    dataaccess::RecordsetPtr group =
        open_statement(concat("SELECT nome, codigo, cid, oid FROM item WHERE oid = ", pOID));
    if (!group->Eof()) delete_item(*group, pOID, pResponsavel);
    release(group);
    return true;
  });
}

void GrupoUsuarios::delete_leaves(const std::string& groups, std::int32_t responsible) {
  dataaccess::RecordsetPtr leaves =
      open_statement(concat("SELECT nome, codigo, cid, oid FROM item WHERE oid in (", groups,
                            ") AND oid NOT IN (SELECT rescopo FROM item WHERE oid in (", groups, "))"));
  for (; !leaves->Eof(); leaves->MoveNext()) {
    delete_item(*leaves, to_int32(leaves->value("oid")), responsible);
  }
}

}  // namespace pradelis::component
