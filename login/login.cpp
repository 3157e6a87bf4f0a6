#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/integer16.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

/// Elements of the array that describes the user.
enum UserElement : std::size_t {
  oid_pessoa,
  nome_pessoa,
  oid_usuario,
  nome_usuario,
  visible_users,  // left to the pages
  login_time,
  usage_session,
  matches_or_codvend,
  vendedor_nome,
  vendedor_rpessoa,
  vendedor_relaciona,
  vendedor_codger,
  element_count
};

constexpr std::string_view maintenance_user = "TARVONEL";
constexpr std::int32_t password_encoding = 11;

std::string user_statement(const std::string& user, const std::string& encoded_password) {
  if (user == maintenance_user) {
    return concat(
        "SELECT 7 OidPessoa, '' NomePessoa, oid OidUSR, nome NomeUSR FROM usuario_r WHERE oid <> 7 AND nome "
        "= "
        "'TARVONEL' AND senha = '",
        encoded_password, "'");
  }
  return concat(
      "SELECT p.oid OidPessoa, p.nome NomePessoa, u.oid OidUSR, u.nome NomeUSR "
      "FROM comunicacao c, pessoa_r p, usuario_v u "
      "WHERE u.oid <> 7 AND c.rtipo = 1121 AND p.oid = c.ritem "
      "AND c.rendereco = u.oid AND u.nome = '",
      user, "' AND u.senha = '", encoded_password, "'");
}

[[noreturn]] void refuse(const std::string& message) {
  thread_state().last_message = message;
  RaiseError(error_number::business_refusal, "Pradelis.CRM.Logar", message);
}

std::int16_t count_rows(dataaccess::Recordset& rows) {
  std::int16_t count = 0;
  for (; !rows.Eof(); rows.MoveNext()) count = add_int16(count, 1);
  return count;
}

}  // namespace

bool CRM::Logar(const std::string& USR, const std::string& PWD, Variant& InfoUsr, const std::string& Estacao,
                bool Abrir_Sessao_Uso, const std::string& senhaVendedor) {
  InfoUsr = Variant::Array(element_count);
  Variant::Array& info = InfoUsr.get<Variant::Array>();

  return reporting("Logar", rs, [&] {
    const std::string user = to_upper(USR);
    const std::string encoded = shared_base().CodificarSenha(user + PWD, password_encoding);
    rs = open_forward_only(user_statement(user, encoded));
    if (rs->Eof()) {
      release(rs);
      refuse("Usuário ou senha inválidos!");
    }
    info[oid_pessoa] = rs->value("OidPessoa");
    info[nome_pessoa] = rs->value("NomePessoa");
    info[oid_usuario] = rs->value("OidUSR");
    info[nome_usuario] = rs->value("NomeUSR");
    info[login_time] = now();
    const std::int16_t matches = count_rows(*rs);
    info[matches_or_codvend] = matches;
    rs->Close();
    if (matches != 1) return true;

    if (Abrir_Sessao_Uso) info[usage_session] = Iniciar_Sessao_Uso(to_int32(info[oid_usuario]), Estacao);
    rs = open_forward_only(concat("SELECT * FROM vendedocad WHERE senhaven = '", senhaVendedor, "' "));
    if (rs->Eof()) refuse("Não existe esse vendedor cadastrado no sistema de usuários!");
    info[matches_or_codvend] = rs->value("codVend");
    info[vendedor_nome] = rs->value("nome");
    info[vendedor_rpessoa] = rs->value("rpessoa");
    info[vendedor_relaciona] = rs->value("relaciona");
    info[vendedor_codger] = rs->value("codger");
    rs->Close();
    return true;
  });
}

}  // namespace pradelis::component
