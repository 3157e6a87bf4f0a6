#include "component/thread_state.h"
#include "tests/support/component_test.h"
#include "tests/support/recording.h"
#include "values/clock.h"

namespace pradelis::tests {
namespace {

/// Salesperson João with the account JOÃO, and the salesperson record that "abre-te" finds.
class Login : public ComponentTest {
 protected:
  Login() {
    Variant login = "joão", person;
    crm_->Cadastrar_Vendedor("João d'Oeste", "", "", "", "", "", "1", "", login, "segredo", "1", person,
                             Variant());
    person_ = person.get<std::int32_t>();
    account_ = number("select oid from item where nome = 'JOÃO'");
    run("insert into vendedocad (codvend, nome, rpessoa, relaciona, codger, senhaven) values (31, 'João "
        "V.', " +
        to_text(person_) + ", 5, 30, 'abre-te')");
    replace_clock([] { return make_date({.year = 2026, .month = 3, .day = 5, .hour = 14}); });
  }
  ~Login() override { replace_clock({}); }

  bool log_in(const std::string& user, const std::string& password, const std::string& own = "abre-te",
              bool session = true) {
    return crm_->Logar(user, password, info_, "caixa 1", session, own);
  }
  std::string described() {
    std::string text;
    for (const Variant& element : info_.get<Variant::Array>()) {
      text += element.is_empty() ? "-|" : to_text(element) + "|";
    }
    return text;
  }
  void expect_refused(const Failure& failure, const std::string& message) {
    EXPECT_EQ(failure.number, 1001);
    EXPECT_EQ(failure.source, "Pradelis.CRM.Logar");
    EXPECT_EQ(failure.description, message);
    EXPECT_EQ(component::thread_state().last_message, message);
  }

  std::int32_t person_ = 0, account_ = 0;
  Variant info_ = "antes";
};

const std::string bad_password = "Usuário ou senha inválidos!";
const std::string no_salesperson = "Não existe esse vendedor cadastrado no sistema de usuários!";

TEST_F(Login, DescribesTheUserAndOpensASession) {
  StatementRecorder recorder;
  EXPECT_TRUE(log_in("João", "segredo"));
  const std::string session = rows("select oid from sessaoaplicativo");
  EXPECT_EQ(described(), concat(person_, "|João d'Oeste|", account_, "|JOÃO|-|05/03/2026 14:00:00|", session,
                                "|31|João V.|", person_, "|5|30|"));
  for (const std::size_t element : {0, 2, 6, 9}) {
    EXPECT_TRUE(info_.get<Variant::Array>()[element].is(VariantType::Int32)) << element;
  }
  const auto statements = recorder.take();
  EXPECT_EQ(
      statements.front(),
      "forward: SELECT p.oid OidPessoa, p.nome NomePessoa, u.oid OidUSR, u.nome NomeUSR FROM comunicacao "
      "c, pessoa_r p, usuario_v u WHERE u.oid <> 7 AND c.rtipo = 1121 AND p.oid = c.ritem AND c.rendereco "
      "= u.oid AND u.nome = 'JOÃO' AND u.senha = '" +
          crm_->QLCBase()->CodificarSenha("JOÃOsegredo", 11) + "'");
  EXPECT_EQ(statements.back(), "forward: SELECT * FROM vendedocad WHERE senhaven = 'abre-te' ");
  ASSERT_NE(crm_->rs, nullptr);
  EXPECT_EQ(crm_->rs->State(), dataaccess::ObjectState::Closed);
}

TEST_F(Login, WithoutSessionStillLooksForTheSalesperson) {
  EXPECT_TRUE(log_in("JOÃO", "segredo", "abre-te", false));
  EXPECT_TRUE(info_.get<Variant::Array>()[6].is_empty());
  EXPECT_EQ(info_.get<Variant::Array>()[7], Variant(std::int32_t{31}));
  EXPECT_EQ(rows("select count(*) from sessaodeuso"), "0");
}

TEST_F(Login, RefusesWithOneMessageWhateverDoesNotMatch) {
  for (const auto& [user, password] :
       {std::pair{"joão", "Segredo"}, {"joao", "segredo"}, {"", ""}, {"JOÃO ", "segredo"}}) {
    info_ = "antes";
    expect_refused(failure_of([&] { log_in(user, password); }), bad_password);
    EXPECT_EQ(described(), "-|-|-|-|-|-|-|-|-|-|-|-|");
    EXPECT_EQ(crm_->rs, nullptr);
  }
  run("insert into comunicacao (oid, rtipo, ritem, rendereco) values (1, 1121, 7, 7)");
  store("select senha from usuario where oid = 7", crm_->QLCBase()->CodificarSenha("SISTEMAx", 11));
  expect_refused(failure_of([&] { log_in("sistema", "x"); }), bad_password);
}

TEST_F(Login, AnUnknownSalespersonPasswordLeavesTheSessionOpen) {
  for (const std::string own : {"", "errada"}) {
    expect_refused(failure_of([&] { log_in("joão", "segredo", own); }), no_salesperson);
  }
  EXPECT_EQ(rows("select count(*) from sessaodeuso where termino is null"), "2");
}

TEST_F(Login, AnAmbiguousLoginSaysHowManyMatched) {
  run("insert into comunicacao (oid, rtipo, ritem, rendereco) values (1, 1121, 7, " + to_text(account_) +
      ")");
  EXPECT_TRUE(log_in("joão", "segredo"));
  const auto& info = info_.get<Variant::Array>();
  EXPECT_EQ(info[7], Variant(std::int16_t{2}));
  EXPECT_TRUE(info[6].is_empty() && info[8].is_empty());
  EXPECT_EQ(rows("select count(*) from sessaodeuso"), "0");
}

TEST_F(Login, TheMaintenanceUserIsPersonSevenWithoutName) {
  store("select senha from usuario where oid = 26737", crm_->QLCBase()->CodificarSenha("TARVONELchave", 11));
  StatementRecorder recorder;
  EXPECT_TRUE(log_in("tarvonel", "chave", "abre-te", false));
  const auto& info = info_.get<Variant::Array>();
  EXPECT_EQ(to_int32(info[0]), 7);
  EXPECT_EQ(info[1], Variant(""));
  EXPECT_EQ(info[3], Variant("TARVONEL"));
  EXPECT_EQ(
      recorder.take().front(),
      "forward: SELECT 7 OidPessoa, '' NomePessoa, oid OidUSR, nome NomeUSR FROM usuario_r WHERE oid <> 7 "
      "AND nome = 'TARVONEL' AND senha = '" +
          crm_->QLCBase()->CodificarSenha("TARVONELchave", 11) + "'");
}

TEST_F(Login, AQuoteInTheNameBreaksTheStatement) {
  const Failure failure = failure_of([&] { log_in("d'ana", "x"); });
  EXPECT_EQ(failure.number, error_number::wrong_statement);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Logar");
}

}  // namespace
}  // namespace pradelis::tests
