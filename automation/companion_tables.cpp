#include "automation/classes.h"
#include "automation/table_builder.h"

namespace pradelis::automation {

const ClassTable& pessoa_juridica_table() {
  using component::PessoaJuridica;
  static const ClassTable table =
      TableBuilder<PessoaJuridica>()
          .method<&PessoaJuridica::Montar_Arv_Classif>("Montar_Arv_Classif", val("CheckBox"), val("Tamanho"),
                                                       val("CollClassifSelec"), ref("RSuper", ""))
          .build();
  return table;
}

const ClassTable& vendedor_table() {
  using component::Vendedor;
  static const ClassTable table =
      TableBuilder<Vendedor>()
          .method<&Vendedor::Montar_Arv_Vendedor>("Montar_Arv_Vendedor", val("CheckBox"), val("OidPF"),
                                                  val("NomePF"), val("Tamanho"))
          .build();
  return table;
}

const ClassTable& grupo_usuarios_table() {
  using component::GrupoUsuarios;
  static const ClassTable table =
      TableBuilder<GrupoUsuarios>()
          .variable<&GrupoUsuarios::strSQL>("strSQL")
          .variable<&GrupoUsuarios::LastError>("LastError")
          .method<&GrupoUsuarios::Cadastrar_Grupo>("Cadastrar_Grupo", val("pRespCadastro"), val("pNomeGRP"),
                                                   val("pOidGRPPai"), val("pOBS", ""))
          .method<&GrupoUsuarios::Excluir_Grupo>("Excluir_Grupo", val("pOID"), val("pResponsavel"))
          .method<&GrupoUsuarios::Alterar_Grupo>("Alterar_Grupo", val("pOID"), val("pRespCadastro"),
                                                 val("pNomeGRP"), val("pOidGRPPai"), val("pOBS", ""))
          .method<&GrupoUsuarios::fGruposVisiveis>("fGruposVisiveis", val("pOidPessoa"), val("tipoBusca", 1))
          .method<&GrupoUsuarios::fUsuariosVisiveis>("fUsuariosVisiveis", val("pOidPessoa"),
                                                     val("tipoBusca", 3))
          .method<&GrupoUsuarios::fSubGrupos>("fSubGrupos", val("pOidGRP"), val("tipoBusca", 2))
          .method<&GrupoUsuarios::fUsuariosGRP>("fUsuariosGRP", val("pListaGRP"))
          .build();
  return table;
}

}  // namespace pradelis::automation
