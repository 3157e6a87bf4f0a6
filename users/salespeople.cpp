#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/integer16.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

constexpr std::int32_t person_class = 45;
constexpr std::int32_t user_account_class = 65;
constexpr std::int32_t user_account_scope = 26736;
constexpr std::int32_t user_account_role = 7;
constexpr std::int32_t group_member_role = 26735;
constexpr std::int32_t person_has_account = 1121;
constexpr std::int32_t password_encoding = 11;

std::int32_t add_item(std::int32_t responsible, const std::string& name, std::int32_t item_class,
                      std::int32_t scope) {
  return shared_base().IncluirItem(responsible, name, item_class, 7, scope, Variant::missing(),
                                   Variant::missing(), responsible, "", "", 0);
}

void add_row_of(dataaccess::RecordsetPtr& table, const std::string& name, std::int32_t oid) {
  table = open_table(name);
  table->AddNew();
  table->set("oid", oid);
  table->Update();
  table->Close();
}

void add_account(dataaccess::RecordsetPtr& table, std::int32_t oid, const std::string& encoded_password) {
  table = open_table("USUARIO");
  table->AddNew();
  table->set("SENHA", encoded_password);
  table->set("OID", oid);
  table->set("INICIOVALIDADE", Variant::null());
  table->Update();
  release(table);
}

/// False at the first membership that was not recorded.
bool join_groups(std::int32_t person, const std::string& groups) {
  const auto pieces = split(groups, ',');
  require_int16_count(pieces.size());
  for (const std::string_view piece : pieces) {
    if (!shared_base().IncluirAgrupamento(group_member_role, to_int32(piece), person)) return false;
  }
  return true;
}

}  // namespace

bool CRM::Cadastrar_Vendedor(const Variant& NomeDaPessoa, const Variant& NomeDaRua, const Variant& Numero,
                             const Variant& Complemento, const Variant& NomeBairro, const Variant& CEP,
                             const Variant& rCidade, const Variant& ListaDeGrupos, Variant& LoginDoCRM,
                             const Variant& SenhaDoCRM, const Variant& RespCadastro, Variant& OidPessoaFisica,
                             const Variant& /*msgusr*/, const std::string& /*Observacao*/) {
  return reporting("Cadastrar_Vendedor", [&] {
    const std::string login = to_upper(to_text(LoginDoCRM));
    LoginDoCRM = login;
    working_ = open_snapshot(
        concat("SELECT * FROM usuario_r WHERE LTRIM(RTRIM(nome)) = '", trim(login), "' ORDER BY nome"));
    const bool taken = !working_->Eof();
    release(working_);
    if (taken) {
      RaiseError(error_number::business_refusal, "Pradelis.CRM.Cadastrar_Vendedor",
                 concat("Já existe o vendedor ", login, " no banco de dados."));
    }

    dataaccess::QLCBase& base = shared_base();
    const std::int32_t responsible = to_int32(RespCadastro);
    const std::int32_t person = add_item(responsible, to_text(NomeDaPessoa), person_class, 7);
    add_row_of(working_, "PESSOA", person);
    add_row_of(working_, "PESSOAFISICA", person);
    const std::int32_t account = add_item(responsible, login, user_account_class, user_account_scope);
    add_account(working_, account, base.CodificarSenha(concat(login, SenhaDoCRM), password_encoding));

    if (!base.IncluirAgrupamento(user_account_role, user_account_scope, account)) return false;
    if (!join_groups(person, to_text(ListaDeGrupos))) return false;
    if (!base.RelacionarItens(person, person_has_account, account, 0)) return false;
    base.IncluirEndereco(person, to_int32(rCidade), to_text(CEP), to_text(NomeBairro), to_text(Complemento),
                         to_text(Numero), to_text(NomeDaRua), "", responsible);
    OidPessoaFisica = person;
    return true;
  });
}

bool CRM::Alterar_Grupo_Vendedor(std::int32_t RGRUPO, std::int32_t OIDPessoa) {
  return reporting("Alterar_Grupo_Vendedor", [&] {
    working_ = open_updatable(concat("select * from agrupamento where rpapel=26735 and ritem = ", OIDPessoa));
    if (!working_->Eof()) {
      working_->set("rgrupo", RGRUPO);
      working_->Update();
    }
    release(working_);
    return true;
  });
}

}  // namespace pradelis::component
