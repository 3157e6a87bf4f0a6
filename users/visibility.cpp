#include <cstdint>
#include <string>
#include <vector>

#include "component/crm.h"
#include "component/descent.h"
#include "component/grupo_usuarios.h"
#include "component/integer16.h"
#include "component/recordsets.h"
#include "component/session_user.h"
#include "component/thread_state.h"
#include "dataaccess/read_hold.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

constexpr std::string_view source_prefix = "Pradelis.GrupoUsuarios.";

/// What the kinds of search (`tipoBusca`) mean to the function that is asked for.
constexpr std::int16_t own_groups_only = 1;
constexpr std::int16_t groups_below_only = 3;
constexpr std::int16_t at_any_depth = 2;

/// Appends identifiers, or a list of them, to a list.
void append_to_list(std::string& list, const Variant& more) {
  if (!list.empty()) list += ", ";
  append_text(list, more);
}

}  // namespace

dataaccess::RecordsetPtr GrupoUsuarios::open_statement(std::string sql) {
  strSQL = std::move(sql);
  return open_snapshot(strSQL);
}

dataaccess::RecordsetPtr GrupoUsuarios::open_children(std::int32_t group) {
  return open_statement(concat("SELECT oid FROM item_r WHERE rescopo = ", group));
}

std::string GrupoUsuarios::fSubGrupos(std::int32_t pOidGRP, std::int16_t tipoBusca) {
  return reporting(source_prefix, "fSubGrupos", [&] {
    std::string groups;
    Descent descent;
    // The levels stand on a list of their own, not on the stack: a tree of groups may have any depth.
    std::vector<dataaccess::RecordsetPtr> levels{open_children(pOidGRP)};
    const dataaccess::ReadHold hold(shared_conn().Conexao());
    while (!levels.empty()) {
      dataaccess::Recordset& children = *levels.back();
      if (children.Eof()) {
        children.Close();
        levels.pop_back();
        if (!levels.empty()) descent.leave();
        continue;
      }
      const Variant oid = children.value(0);
      append_to_list(groups, oid);
      children.MoveNext();
      if (tipoBusca != at_any_depth) continue;
      descent.enter(to_int32(oid));
      levels.push_back(open_children(to_int32(oid)));
    }
    return groups;
  });
}

std::string GrupoUsuarios::fGruposVisiveis(std::int32_t pOidPessoa, std::int16_t tipoBusca) {
  return reporting(source_prefix, "fGruposVisiveis", [&] {
    std::string groups;
    dataaccess::RecordsetPtr memberships =
        open_statement(concat("SELECT * FROM agrupamento WHERE ritem = ", pOidPessoa, " and rpapel = 26735"));
    for (; !memberships->Eof(); memberships->MoveNext()) {
      const Variant group = memberships->value("rgrupo");
      if (tipoBusca != groups_below_only) append_to_list(groups, group);
      if (tipoBusca == own_groups_only) continue;
      const std::string below = fSubGrupos(to_int32(group), at_any_depth);
      if (!below.empty()) append_to_list(groups, below);
    }
    release(memberships);
    return groups;
  });
}

std::string GrupoUsuarios::fUsuariosGRP(const std::string& pListaGRP) {
  return reporting(source_prefix, "fUsuariosGRP", [&] {
    std::string users;
    dataaccess::RecordsetPtr members =
        open_statement(concat("SELECT ritem FROM agrupamento WHERE rgrupo IN (", pListaGRP, ")"));
    for (; !members->Eof(); members->MoveNext()) append_to_list(users, members->value(0));
    release(members);
    return users;
  });
}

std::string GrupoUsuarios::fUsuariosVisiveis(std::int32_t pOidPessoa, std::int16_t tipoBusca) {
  return reporting(source_prefix, "fUsuariosVisiveis", [&] {
    const std::string groups = fGruposVisiveis(pOidPessoa, tipoBusca);
    std::string users = groups.empty() ? std::string() : fUsuariosGRP(groups);
    append_to_list(users, pOidPessoa);
    return users;
  });
}

bool CRM::VerificaSubordinado(std::int32_t Vendedor) {
  return reporting("VerificaSubordinado", [&] {
    const std::string users = to_text(visible_users_of_session());
    const auto pieces = split(users, ',');
    require_int16_count(pieces.size());
    for (const std::string_view piece : pieces) {
      if (to_int32(piece) == Vendedor) return true;
    }
    return false;
  });
}

}  // namespace pradelis::component
