#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "dataaccess/recordset.h"
#include "values/object.h"

namespace pradelis::component {

/// User groups, and the lists of groups and users that a person may see.
///
/// A group is an item of class 18 whose scope (`rescopo`) is its parent group. Lists are identifiers
/// joined by ", "; the empty text means none. Every failure is raised with the source
/// "Pradelis.GrupoUsuarios." and the method's name. Nothing is rolled back.
class GrupoUsuarios : public Object {
 public:
  /// The statement that the object last built, also when it failed.
  std::string strSQL;
  /// Kept for pages; no method writes it.
  std::string LastError;

  /// Creates a group under `pOidGRPPai`. Always True; names and parents are not checked.
  bool Cadastrar_Grupo(std::int32_t pRespCadastro, const std::string& pNomeGRP, std::int32_t pOidGRPPai,
                       const std::string& pOBS = "");
  /// Deletes the group and everything live below it, leaves first. True also for an unknown group.
  bool Excluir_Grupo(std::int32_t pOID, std::int32_t pResponsavel);
  /// Writes name, parent and observation of a group. Always True.
  bool Alterar_Grupo(std::int32_t pOID, std::int32_t pRespCadastro, const std::string& pNomeGRP,
                     std::int32_t pOidGRPPai, const std::string& pOBS = "");

  /// Groups of a person. `tipoBusca` 1: the own groups; 3: only those below them; any other: the own
  /// groups, each followed by those below it.
  std::string fGruposVisiveis(std::int32_t pOidPessoa, std::int16_t tipoBusca = 1);
  /// Members of the groups that `fGruposVisiveis` gives, and last the person himself.
  std::string fUsuariosVisiveis(std::int32_t pOidPessoa, std::int16_t tipoBusca = 3);
  /// Groups below a group. `tipoBusca` 2: at any depth, depth first; any other: direct children.
  std::string fSubGrupos(std::int32_t pOidGRP, std::int16_t tipoBusca = 2);
  /// Members, in any role, of the listed groups. `pListaGRP` goes into the statement as it is; an
  /// empty list is refused by the database.
  std::string fUsuariosGRP(const std::string& pListaGRP);

 private:
  /// Keeps a statement in `strSQL` and opens it, read-only and static.
  dataaccess::RecordsetPtr open_statement(std::string sql);
  dataaccess::RecordsetPtr open_children(std::int32_t group);
  /// Deletes those of the listed items that are the scope of no other listed one.
  void delete_leaves(const std::string& groups, std::int32_t responsible);
};
using GrupoUsuariosPtr = std::shared_ptr<GrupoUsuarios>;

}  // namespace pradelis::component
