#include "automation/classes.h"
#include "automation/table_builder.h"

namespace pradelis::automation {
namespace {

using component::CRM;
using Table = TableBuilder<CRM>;

void frame(Table& table) {
  table.variable<&CRM::rs>("rs")
      .variable<&CRM::rs2>("rs2")
      .variable<&CRM::rs3>("rs3")
      .variable<&CRM::rs6>("rs6")
      .variable<&CRM::sValor>("sValor")
      .get<&CRM::PValorNegocio>("PValorNegocio")
      .let<&CRM::set_PValorNegocio>("PValorNegocio")
      .get<&CRM::QLCConn>("QLCConn")
      .get<&CRM::QLCBase>("QLCBase")
      .get<&CRM::QLCData>("QLCData")
      .get<&CRM::cGrupoUsuarios>("cGrupoUsuarios")
      .get<&CRM::cPessoaJuridica>("cPessoaJuridica")
      .get<&CRM::cVendedor>("cVendedor");
}

template <auto function>
void query(Table& table, std::string_view name) {
  table.method<function>(name, ref("sql"), ref("CursorType", 3), ref("LockType", 1), ref("CursorLocation", 2),
                         ref("MaxRecords", 0));
}

void queries_and_formatting(Table& table) {
  query<&CRM::Executar>(table, "Executar");
  query<&CRM::Executar2>(table, "Executar2");
  query<&CRM::Executar3>(table, "Executar3");
  query<&CRM::Executar6>(table, "Executar6");
  table.method<&CRM::FormataNumero>("FormataNumero", ref("valor"))
      .method<&CRM::FormataOid>("FormataOid", ref("valor"))
      .method<&CRM::converte>("converte", ref("valor1"))
      // Not coerced: only what is exactly True asks for the time of day.
      .method<&CRM::DataAgora>("DataAgora", declared(ValueType::Boolean, ref("DATAEHORA", true)))
      .method<&CRM::PrepararVariavel>("PrepararVariavel", ref("StrValue"));
}

void login(Table& table) {
  table
      .method<&CRM::Logar>("Logar", val("USR"), val("PWD"), ref("InfoUsr"), val("Estacao", ""),
                           val("Abrir_Sessao_Uso", true), val("senhaVendedor", ""))
      .method<&CRM::Iniciar_Sessao_Uso>("Iniciar_Sessao_Uso", ref("rUsuario"), ref("Estacao"))
      .method<&CRM::Finalizar_Sessao_Uso>("Finalizar_Sessao_Uso", ref("OIDSessaoApp"), ref("Motivo", 2))
      .method<&CRM::OidEmpresaCorrente>("OidEmpresaCorrente");
}

void deals(Table& table) {
  table
      .method<&CRM::Cadastrar_Negocio>("Cadastrar_Negocio", ref("RPESSOA"), ref("rContato"), ref("Vendedor"),
                                       ref("DATAPROVAVEL"), ref("codClasseProdutos"), ref("rIndicador"),
                                       ref("Observacao"), ref("NOME"), ref("ValorProvavel"), ref("nErro", 0))
      .method<&CRM::Fechar_Negocio>("Fechar_Negocio", ref("DATAFECHAMENTO"), ref("oidNegocio"))
      .method<&CRM::Perder_Negocio>("Perder_Negocio", ref("DATAFECHAMENTO"), ref("RMOTIVO"),
                                    ref("Observacao"), ref("oidNegocio"))
      .method<&CRM::Estornar_Negocio>("Estornar_Negocio", ref("oidNegocio"))
      .method<&CRM::Negocio_Status>("Negocio_Status", ref("oidNegocio"))
      .method<&CRM::Fechamento_Previsto>("Fechamento_Previsto", ref("DATAFECHAMENTO"), ref("DATAPROVAVEL"),
                                         ref("RMOTIVO"))
      .method<&CRM::Diadecorrido>("Diadecorrido", ref("oidNegocio"))
      .method<&CRM::Alterar_Negocio>("Alterar_Negocio", ref("oidNegocio"), ref("rContato"), ref("Vendedor"),
                                     ref("DATAPROVAVEL"), ref("codClasseProdutos"), ref("rIndicador"),
                                     ref("Observacao"), ref("ValorProvavel"), ref("nErro", 0))
      .method<&CRM::Alterar_Vendedor_Negocio>("Alterar_Vendedor_Negocio", ref("NOVOVENDEDOR"),
                                              ref("oidNegocio"))
      .method<&CRM::String_Negocio_Vendedor>("String_Negocio_Vendedor", ref("OidVendedor", 0),
                                             ref("OIDEMPRESA", none()), ref("ABERTO", true),
                                             ref("FECHADO", true), ref("Perdido", true), ref("tipoBusca", 3));
}

void accounts(Table& table) {
  table
      .method<&CRM::Cadastrar_Empresa>("Cadastrar_Empresa", ref("RAZAOSOCIAL"), ref("Vendedor"),
                                       ref("Observacao"), ref("NOME"), ref("CIDADE"), ref("CEP"),
                                       ref("BAIRRO"), ref("Complemento"), ref("Numero"), ref("Rua"),
                                       ref("CATEGORIA_CADASTRO"))
      .method<&CRM::Alterar_Empresa>("Alterar_Empresa", ref("OID"), ref("RAZAOSOCIAL"), ref("Vendedor"),
                                     ref("Observacao"), ref("NOME"), ref("CIDADE"), ref("CEP"), ref("BAIRRO"),
                                     ref("Complemento"), ref("Numero"), ref("Rua"))
      .method<&CRM::Cadastrar_Contato>("Cadastrar_Contato", ref("Vendedor"), ref("NOMECONTATO"), ref("CARGO"),
                                       ref("Empresa"))
      .method<&CRM::Alterar_Contato>("Alterar_Contato", ref("OID"), ref("Vendedor"), ref("NOMECONTATO"),
                                     ref("CARGO"), ref("Empresa"))
      .method<&CRM::Alterar_Vendedor_Prospect>("Alterar_Vendedor_Prospect", ref("NOVOVENDEDOR"),
                                               ref("OIDProspect"))
      .method<&CRM::String_Empresa_Vendedor>("String_Empresa_Vendedor", ref("OidVendedor", 0),
                                             ref("Cliente", true))
      .method<&CRM::String_filho>("String_filho", ref("OID"))
      .method<&CRM::Cadastrar_Cidade>("Cadastrar_Cidade", ref("RPROVINCIA"), ref("DDD"), ref("Observacao"),
                                      ref("NOME"), ref("CRIADOPOR"))
      .method<&CRM::Cadastrar_Classificacao>("Cadastrar_Classificacao", ref("RELACIONADO"), ref("CATEGORIA"))
      .method<&CRM::Excluir>("Excluir", ref("NOME"), ref("CODIGO"), ref("EXCLUIDOPOR"), ref("EXCLUIDOEM"),
                             ref("RAPLICATIVO"), ref("CID"), ref("OID"));
}

void activities(Table& table) {
  table
      .method<&CRM::Cadastrar_Atividade>("Cadastrar_Atividade", ref("RPESSOA"), ref("RNEGOCIOPOSSIVEL"),
                                         ref("RATIVIDADE"), ref("rVendedor"), ref("rContato"), ref("DATA"),
                                         ref("Observacao"), ref("PROXIMOCONTATO"), ref("RPROXIMAATIVIDADE"),
                                         ref("CRIADOEM"), ref("NOME"), ref("RPROXIMOVENDEDOR"))
      .method<&CRM::Alterar_Atividade>("Alterar_Atividade", ref("RPESSOA"), ref("RNEGOCIOPOSSIVEL"),
                                       ref("rVendedor"), ref("rContato"), ref("DATA"), ref("PROXIMOCONTATO"),
                                       ref("OIDATIVIDADE"), ref("Observacao"), ref("ATIVIDADE"),
                                       ref("RPROXIMAATIVIDADE"), ref("RPROXIMOVENDEDOR"));
}

void catalog(Table& table) {
  table.method<&CRM::Cadastrar_Produto>("Cadastrar_Produto", ref("NOME"))
      .method<&CRM::Alterar_Produto>("Alterar_Produto", ref("NOME"), ref("OID"))
      .method<&CRM::Excluir_Produto>("Excluir_Produto", ref("OID"))
      .method<&CRM::Adicionar_Arquivo>("Adicionar_Arquivo", ref("Arquivo"), ref("NOME"), ref("CRIADOPOR"),
                                       ref("Observacao"), ref("RITEM"))
      .method<&CRM::Excluir_Arquivo>("Excluir_Arquivo", ref("IDARQUIVO"), ref("OIDFUNCIONARIO"))
      .method<&CRM::Escrever_Tamanho_Arquivo>("Escrever_Tamanho_Arquivo", ref("TAM"));
}

void extra_fields(Table& table) {
  table
      .method<&CRM::Alterar_Aditivo>("Alterar_Aditivo", ref("RELACIONADO"), ref("Definicao"), ref("valor"),
                                     ref("CRIAR_SE_NAO_HOUVER", true))
      .method<&CRM::Aditivo_Ver>("Aditivo_Ver", ref("RELACIONADO"), ref("Definicao"))
      .method<&CRM::Aditivo_Escrever>("Aditivo_Escrever", ref("DadoAdicional"), ref("Contador"),
                                      ref("EscreverLinhaTab", true), ref("ValorSelecionado", ""),
                                      ref("ConcatHtml", ""))
      .method<&CRM::Aditivo_Escrever_Item>("Aditivo_Escrever_Item", ref("RITEM"), ref("Visivel"),
                                           ref("AlterarItem", 0), ref("ConcatHtml", ""),
                                           ref("Except", "-1000"));
}

void salespeople(Table& table) {
  table.method<&CRM::VerificaSubordinado>("VerificaSubordinado", ref("Vendedor"))
      .method<&CRM::Cadastrar_Vendedor>("Cadastrar_Vendedor", ref("NomeDaPessoa"), ref("NomeDaRua"),
                                        ref("Numero"), ref("Complemento"), ref("NomeBairro"), ref("CEP"),
                                        ref("rCidade"), ref("ListaDeGrupos"), ref("LoginDoCRM"),
                                        ref("SenhaDoCRM"), ref("RespCadastro"), ref("OidPessoaFisica"),
                                        ref("msgusr"), val("Observacao", ""))
      .method<&CRM::Alterar_Grupo_Vendedor>("Alterar_Grupo_Vendedor", val("RGRUPO"), val("OIDPessoa"));
}

ClassTable make_table() {
  Table table;
  frame(table);
  queries_and_formatting(table);
  login(table);
  deals(table);
  accounts(table);
  activities(table);
  catalog(table);
  extra_fields(table);
  salespeople(table);
  return table.build();
}

}  // namespace

const ClassTable& crm_table() {
  static const ClassTable table = make_table();
  return table;
}

}  // namespace pradelis::automation
