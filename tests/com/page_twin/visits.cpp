#include "dataaccess/quelcor.h"
#include "tests/com/page_twin/frame.h"

// Login, logout and the two trees.
namespace pradelis::test {
namespace {

constexpr std::size_t visible_users = 4;
constexpr std::size_t usage_session = 6;
constexpr std::size_t salesperson_name = 8;

/// Gives the reason why the visitor is not let in; empty when he is.
std::string log_in(TwinPage& page, Visitor& visitor, component::CRM& crm) {
  constexpr std::int32_t password_encoding = 11;
  const std::string login = page.field("usuario");
  const std::string password = value_of(page.request().form, "senha");
  const std::string given = value_of(page.request().form, "senha_vendedor");
  const std::string salesperson =
      given.empty() ? crm.QLCBase()->CodificarSenha(to_upper(login) + password, password_encoding) : given;
  Variant who;
  std::string failure = failure_of([&] {
    crm.Logar(crm.PrepararVariavel(login), password, who, "127.0.0.1", true,
              crm.PrepararVariavel(salesperson));
  });
  auto& elements = who.get<Variant::Array>();
  if (failure.empty() && elements[salesperson_name].is_empty())
    failure = "Há mais de uma pessoa com este usuário.";
  if (!failure.empty()) {
    if (!elements[usage_session].is_empty()) crm.Finalizar_Sessao_Uso(to_int32(elements[usage_session]));
    return failure;
  }
  elements[visible_users] = crm.cGrupoUsuarios()->fUsuariosVisiveis(to_int32(elements[0]));
  visitor.information = who;
  visitor.host.set_session("InformacoesUsuario", who);
  return {};
}

}  // namespace

void serve_login(TwinPage& page, Visitor& visitor) {
  std::string failure;
  if (page.receives_form()) {
    const auto crm = std::make_shared<component::CRM>();
    failure = log_in(page, visitor, *crm);
    if (failure.empty()) return page.redirect("negocios.asp");
  }
  page.text(0);
  begin(page, {visitor.host, {}}, "Entrar");
  warn(page, failure);
  page.text(1).escaped(page.field("usuario")).text(2);
  end(page);
  page.text(3);
}

void serve_logout(TwinPage& page, Visitor& visitor, component::CRM& crm) {
  if (page.receives_form()) {
    const Variant& session = visitor.element(usage_session);
    if (!session.is_empty()) crm.Finalizar_Sessao_Uso(to_int32(session));
    visitor.information = Variant();
    visitor.host.clear_session();
  }
  page.redirect("entrar.asp");
}

void serve_categories(TwinPage& page, Visitor& visitor, component::CRM& crm) {
  const std::string categories = identifiers(value_of(page.request().query, "categoria"));
  page.text(0);
  begin(page, visitor, "Empresas por categoria");
  page.text(1);
  crm.cPessoaJuridica()->Montar_Arv_Classif("categoria", 10, categories);
  page.take_component().text(2);
  if (!categories.empty()) {
    crm.Executar(
        concat("select distinct j.oid, j.nome from pessoajuridica_r j join classificacao k"
               " on k.ritem = j.oid where k.rcategoria in (",
               categories, ") and j.oid in (", crm.String_Empresa_Vendedor(), ") order by j.nome, j.oid"));
    page.text(3);
    for (dataaccess::Recordset& rows = *crm.rs; !rows.Eof(); rows.MoveNext()) {
      page.text(4).write(rows.value("oid")).text(5).escaped(rows.value("nome")).text(6);
    }
    page.text(7);
  }
  end(page);
  page.text(8);
}

void serve_salespeople(TwinPage& page, Visitor& visitor, component::CRM& crm) {
  page.text(0);
  begin(page, visitor, "Vendedores");
  page.text(1);
  crm.cVendedor()->Montar_Arv_Vendedor("vendedor", to_int32(visitor.element(0)), to_text(visitor.element(1)),
                                       5);
  page.take_component().text(2);
  end(page);
  page.text(3);
}

}  // namespace pradelis::test
