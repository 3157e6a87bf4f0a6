#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "component/error_reporting.h"
#include "component/grupo_usuarios.h"
#include "component/pessoa_juridica.h"
#include "component/vendedor.h"
#include "dataaccess/quelcor.h"
#include "values/variant.h"

namespace pradelis::component {

/// The business object: a page creates one for each request.
///
/// Parameters that a method writes back are non-const references; all others are only read. Methods
/// raise failures as `Error`s with the source "Pradelis.CRM." and the method's name, unless they say
/// otherwise. Several methods put arguments into statements as they are; `docs/methods.md` lists them.
/// Nothing is transactional: what was written before a failure stays.
class CRM : public Object {
 public:
  /// Runs `Main` when the thread's library root is empty, fetches the web application, and writes its
  /// three connection settings into the thread's connection object. Raises what fails on the way
  /// (error 13 for a time-out that is no number).
  CRM();
  /// Lets the thread's web objects go.
  ~CRM() override;

  // The frame

  /// Result slots of `Executar` and its siblings, free for the page to read and replace.
  dataaccess::RecordsetPtr rs, rs2, rs3, rs6;
  /// Value slot shared by the page, `String_filho`, `Excluir_Arquivo` and `String_Negocio_Vendedor`.
  Variant sValor;

  std::uint8_t PValorNegocio() const { return valor_negocio_; }
  /// Stores 0 for 0, and 1 for any other value.
  void set_PValorNegocio(std::uint8_t value) { valor_negocio_ = value == 0 ? 0 : 1; }

  dataaccess::QLCConnPtr QLCConn();
  dataaccess::QLCBasePtr QLCBase();
  dataaccess::QLCDataPtr QLCData();
  /// The thread's shared objects, created on first use.
  GrupoUsuariosPtr cGrupoUsuarios();
  PessoaJuridicaPtr cPessoaJuridica();
  VendedorPtr cVendedor();

  // Queries: each runs `sql` and leaves the open recordset in its slot. Result: the text "0".

  Variant Executar(const Variant& sql, dataaccess::CursorType CursorType = dataaccess::CursorType::Static,
                   dataaccess::LockType LockType = dataaccess::LockType::ReadOnly,
                   dataaccess::CursorLocation CursorLocation = dataaccess::CursorLocation::Server,
                   std::int32_t MaxRecords = 0);
  /// Always server-side, whatever `CursorLocation` says.
  Variant Executar2(const Variant& sql, dataaccess::CursorType CursorType = dataaccess::CursorType::Static,
                    dataaccess::LockType LockType = dataaccess::LockType::ReadOnly,
                    dataaccess::CursorLocation CursorLocation = dataaccess::CursorLocation::Server,
                    std::int32_t MaxRecords = 0);
  Variant Executar3(const Variant& sql, dataaccess::CursorType CursorType = dataaccess::CursorType::Static,
                    dataaccess::LockType LockType = dataaccess::LockType::ReadOnly,
                    dataaccess::CursorLocation CursorLocation = dataaccess::CursorLocation::Server,
                    std::int32_t MaxRecords = 0);
  Variant Executar6(const Variant& sql, dataaccess::CursorType CursorType = dataaccess::CursorType::Static,
                    dataaccess::LockType LockType = dataaccess::LockType::ReadOnly,
                    dataaccess::CursorLocation CursorLocation = dataaccess::CursorLocation::Server,
                    std::int32_t MaxRecords = 0);

  // Value formatting: no database, failures reach the caller unchanged.

  /// The double that a typed number means; a decimal point counts as comma when one or two digits, or
  /// none, follow it. `valor` receives the cleaned text.
  Variant FormataNumero(Variant& valor);
  /// Null for Null, else a 32-bit integer.
  Variant FormataOid(const Variant& valor);
  /// `valor1` as "1.234,50", also written back; a text that is no number stays.
  std::string converte(std::string& valor1);
  /// Today as dd/mm/yyyy; with the time of day after a blank only when `DATAEHORA` is exactly True.
  std::string DataAgora(const Variant& DATAEHORA = true);
  /// The text with its single quotes doubled. Null raises error 94.
  std::string PrepararVariavel(const Variant& StrValue);

  // Login

  /// Checks a login. True when it matched; a refusal is raised as error 1001. `InfoUsr` receives the
  /// array of 12 values that describes the user. `USR` and `senhaVendedor` go into statements as they
  /// are.
  bool Logar(const std::string& USR, const std::string& PWD, Variant& InfoUsr,
             const std::string& Estacao = "", bool Abrir_Sessao_Uso = true,
             const std::string& senhaVendedor = "");
  /// Joins the usage session that another application opened on the workstation (its identifier is the
  /// result), or opens one (the result is the new application session's identifier).
  std::int32_t Iniciar_Sessao_Uso(std::int32_t rUsuario, const std::string& Estacao);
  /// Ends an application session and its usage session, whose state becomes `Motivo`. Raises 3021 when
  /// it is not open.
  bool Finalizar_Sessao_Uso(std::int32_t OIDSessaoApp, std::int16_t Motivo = 2);
  /// The current company's identifier. Raises 3021 when none is configured.
  std::int32_t OidEmpresaCorrente();

  // Deals

  /// Registers a deal. Result: its identifier, or a text that says why not. `nErro` receives the step
  /// reached (1 to 5). Failures reach the caller with the source that they have.
  Variant Cadastrar_Negocio(std::int32_t RPESSOA, std::int32_t rContato, std::int32_t Vendedor,
                            const std::string& DATAPROVAVEL, const std::string& codClasseProdutos,
                            std::int32_t rIndicador, const std::string& Observacao, const std::string& NOME,
                            double ValorProvavel, std::int16_t& nErro);
  /// Sets the closing date. Result: "0". An unknown deal raises 3021, here and below.
  Variant Fechar_Negocio(const Variant& DATAFECHAMENTO, const Variant& oidNegocio);
  /// Sets closing date and reason of loss, and replaces the observation. Result: "0".
  Variant Perder_Negocio(const Variant& DATAFECHAMENTO, std::int32_t RMOTIVO, const Variant& Observacao,
                         std::int32_t oidNegocio);
  /// Clears closing date and reason of loss. Result: "0".
  Variant Estornar_Negocio(const Variant& oidNegocio);
  /// "Aberto", "Fechado", "Perdido" or "NEGÓCIO INEXISTENTE".
  std::string Negocio_Status(std::int32_t oidNegocio);
  /// The expected date as text for an open deal, else "Fechado" or "Perdido". No database.
  Variant Fechamento_Previsto(const Variant& DATAFECHAMENTO, Date DATAPROVAVEL, const Variant& RMOTIVO);
  /// The age of an open deal, such as "12 Dias"; empty for a closed one.
  std::string Diadecorrido(const Variant& oidNegocio);
  /// Rewrites a deal, its observation (unless empty) and all its product classes. Result: "0". `nErro`
  /// receives the step reached (2 to 9). Failures have the source "Pradelis.CRM.Alterar_Neg".
  std::string Alterar_Negocio(const Variant& oidNegocio, std::int32_t rContato, std::int32_t Vendedor,
                              const std::string& DATAPROVAVEL, const std::string& codClasseProdutos,
                              std::int32_t rIndicador, const std::string& Observacao, double ValorProvavel,
                              std::int16_t& nErro);
  /// Hands a deal to another salesperson. Result: "0", also when there is no such deal.
  Variant Alterar_Vendedor_Negocio(const Variant& NOVOVENDEDOR, const Variant& oidNegocio);
  /// The statement that selects the deals that a salesperson may see (0: the logged-in user) of one
  /// company (Null: of all that he may see), in the states asked for. An omitted company raises
  /// error 13. `sValor` receives the list of visible users.
  std::string String_Negocio_Vendedor(std::int32_t OidVendedor = 0,
                                      const Variant& OIDEMPRESA = Variant::missing(), bool ABERTO = true,
                                      bool FECHADO = true, bool Perdido = true, std::int16_t tipoBusca = 3);

  // Companies, contacts, reference data

  /// Registers a company with its address. Result: its identifier in digits, the message for a name
  /// that is taken, or the empty text when a classification was not recorded.
  std::string Cadastrar_Empresa(const Variant& RAZAOSOCIAL, const Variant& Vendedor,
                                const Variant& Observacao, const Variant& NOME, const Variant& CIDADE,
                                const Variant& CEP, const Variant& BAIRRO, const Variant& Complemento,
                                const Variant& Numero, const Variant& Rua, const Variant& CATEGORIA_CADASTRO);
  /// Changes a company and its first address. Result: "0". Raises 1001 when it has no address. `OID`
  /// receives the company's identifier.
  std::string Alterar_Empresa(Variant& OID, const Variant& RAZAOSOCIAL, const Variant& Vendedor,
                              const std::string& Observacao, const Variant& NOME, const Variant& CIDADE,
                              const Variant& CEP, const Variant& BAIRRO, const Variant& Complemento,
                              const Variant& Numero, const Variant& Rua);
  /// Registers a contact of a company in a role. Result: its identifier in digits.
  std::string Cadastrar_Contato(std::int32_t Vendedor, const Variant& NOMECONTATO, std::int32_t CARGO,
                                std::int32_t Empresa);
  /// Renames a contact and sets its role at a company. Result: "0". Raises 3021 when the contact does
  /// not belong to the company, after the name was changed.
  std::string Alterar_Contato(const Variant& OID, const Variant& Vendedor, const Variant& NOMECONTATO,
                              const Variant& CARGO, const Variant& Empresa);
  /// Makes another salesperson the owner of a company. Result: "0", also when no row matched.
  Variant Alterar_Vendedor_Prospect(const Variant& NOVOVENDEDOR, const Variant& OIDProspect);
  /// The statement that selects the companies that a salesperson (0: the logged-in user) may work
  /// with: prospects of visible users, and all clients when `Cliente`.
  Variant String_Empresa_Vendedor(std::int32_t OidVendedor = 0, bool Cliente = true);
  /// Walks from an item to its first salesperson or branch below, level by level, and appends the last
  /// one to `sValor`. Result: "0" for an item with none below it, else the empty text. Failures have
  /// the source "Pradelis.CRM.String_Filho".
  std::string String_filho(const Variant& OID);
  /// Registers a city. Result: the 16-bit integer 0, or the message for a name that is taken.
  Variant Cadastrar_Cidade(const Variant& RPROVINCIA, const Variant& DDD, const std::string& Observacao,
                           const Variant& NOME, const Variant& CRIADOPOR);
  /// Places an object under a category, however often. Result: "0".
  std::string Cadastrar_Classificacao(const Variant& RELACIONADO, const Variant& CATEGORIA);
  /// Enters an object in the deletion register. Result: the 16-bit integer 0.
  Variant Excluir(const Variant& NOME, const Variant& CODIGO, std::int32_t EXCLUIDOPOR, Date EXCLUIDOEM,
                  std::int32_t RAPLICATIVO, std::int32_t CID, std::int32_t OID);

  // Activities

  /// Logs an activity and plans the next one. Result: the 16-bit integer 0. Planning values that are
  /// Null or Empty are stored as null.
  Variant Cadastrar_Atividade(std::int32_t RPESSOA, std::int32_t RNEGOCIOPOSSIVEL, std::int32_t RATIVIDADE,
                              std::int32_t rVendedor, std::int32_t rContato, const Variant& DATA,
                              const std::string& Observacao, const Variant& PROXIMOCONTATO,
                              const Variant& RPROXIMAATIVIDADE, const Variant& CRIADOEM, const Variant& NOME,
                              const Variant& RPROXIMOVENDEDOR);
  /// Rewrites an activity; `rVendedor` is ignored. Result: the 16-bit integer 0. An unknown activity
  /// raises 3021.
  Variant Alterar_Atividade(std::int32_t RPESSOA, std::int32_t RNEGOCIOPOSSIVEL, std::int32_t rVendedor,
                            std::int32_t rContato, const Variant& DATA, const Variant& PROXIMOCONTATO,
                            std::int32_t OIDATIVIDADE, const std::string& Observacao, std::int32_t ATIVIDADE,
                            const Variant& RPROXIMAATIVIDADE, const Variant& RPROXIMOVENDEDOR);

  // Products and files

  /// Registers a product. Result: the 16-bit integer 0, or the message for a name that is taken.
  Variant Cadastrar_Produto(const Variant& NOME);
  /// Renames a product. Result: "0". An unknown product raises 3021.
  Variant Alterar_Produto(const Variant& NOME, const Variant& OID);
  /// Deletes a product and takes it off the deals that name it. Result: "0".
  Variant Excluir_Produto(const Variant& OID);
  /// Attaches a file (its bytes) to an object. Result: the 16-bit integer 0.
  Variant Adicionar_Arquivo(const Variant& Arquivo, const Variant& NOME, const Variant& CRIADOPOR,
                            const std::string& Observacao, const Variant& RITEM);
  /// Deletes a file that the employee may delete. Result: the 16-bit integer 0, or the refusal.
  Variant Excluir_Arquivo(std::int32_t IDARQUIVO, std::int32_t OIDFUNCIONARIO);
  /// Size text of a count of bytes, such as "1,500KBytes". `TAM` may be rewritten to a text.
  /// Failures reach the caller unchanged.
  std::string Escrever_Tamanho_Arquivo(Variant& TAM);

  // Extra fields

  /// Stores the value of an extra field of an object. Result: "0", or the message that says why not.
  std::string Alterar_Aditivo(const Variant& RELACIONADO, const Variant& Definicao, const Variant& valor,
                              bool CRIAR_SE_NAO_HOUVER = true);
  /// The value of an extra field as text; empty when there is none; a message for an unknown field.
  std::string Aditivo_Ver(std::int32_t RELACIONADO, std::int32_t Definicao);
  /// Writes the form row (or only the input) of one extra field into the response.
  void Aditivo_Escrever(std::int32_t DadoAdicional, std::int32_t Contador, bool EscreverLinhaTab = true,
                        const std::string& ValorSelecionado = "", const std::string& ConcatHtml = "");
  /// Writes the table of all extra fields of a kind of record into the response. `RITEM` and `Except`
  /// are lists of identifiers that go into the statement as they are.
  void Aditivo_Escrever_Item(const Variant& RITEM, std::int32_t Visivel, std::int32_t AlterarItem = 0,
                             const std::string& ConcatHtml = "", const std::string& Except = "-1000");

  // Salespeople

  /// Whether a salesperson is among the users that the logged-in user may see.
  bool VerificaSubordinado(std::int32_t Vendedor);
  /// Registers a person with a login, an address and groups. False when a membership or relation was
  /// not recorded; raises 1001 for a login that is taken. `LoginDoCRM` receives its upper case,
  /// `OidPessoaFisica` the new person's identifier. `Observacao` and `msgusr` are not used.
  bool Cadastrar_Vendedor(const Variant& NomeDaPessoa, const Variant& NomeDaRua, const Variant& Numero,
                          const Variant& Complemento, const Variant& NomeBairro, const Variant& CEP,
                          const Variant& rCidade, const Variant& ListaDeGrupos, Variant& LoginDoCRM,
                          const Variant& SenhaDoCRM, const Variant& RespCadastro, Variant& OidPessoaFisica,
                          const Variant& msgusr, const std::string& Observacao = "");
  /// Moves a person's first membership to another group. Always True.
  bool Alterar_Grupo_Vendedor(std::int32_t RGRUPO, std::int32_t OIDPessoa);

 private:
  /// Runs a method's body under the error convention; a failure first releases the working recordsets,
  /// and `slot` too for a method that does its work in a public one.
  template <class Body>
  decltype(auto) reporting(std::string_view method, Body&& body) {
    return component::reporting("Pradelis.CRM.", method, std::forward<Body>(body),
                                [this]() noexcept { release_working(); });
  }
  template <class Body>
  decltype(auto) reporting(std::string_view method, dataaccess::RecordsetPtr& slot, Body&& body) {
    return component::reporting("Pradelis.CRM.", method, std::forward<Body>(body), [this, &slot]() noexcept {
      slot.reset();
      release_working();
    });
  }
  void release_working() noexcept;

  Variant execute_into(dataaccess::RecordsetPtr& slot, std::string_view method, const Variant& sql,
                       dataaccess::CursorType cursor, dataaccess::LockType lock,
                       dataaccess::CursorLocation location, std::int32_t max_records);

  Variant ApagarClasseProduto(const Variant& negocio);
  Variant CadastrarClasseProduto(const std::string& classeProduto, const Variant& negocio);
  /// Adds each class of a list separated by ",", blanks around them removed; none for an empty list.
  void add_product_classes(const std::string& classes, const Variant& negocio);

  /// The value column of an extra field of this definition and type code.
  std::string value_column(const std::string& definicao, const Variant& rtipo);

  dataaccess::RecordsetPtr working_, working2_;
  Variant sql_server_dialect_;
  std::string oracle_dialect_;
  std::uint8_t valor_negocio_ = 1;
};
using CRMPtr = std::shared_ptr<CRM>;

}  // namespace pradelis::component
