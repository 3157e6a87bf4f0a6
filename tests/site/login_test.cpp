#include "site/site.h"
#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using Login = SiteTest;

TEST_F(Login, LeadsToTheFirstPageAndBack) {
  Visitor visitor(site_);
  EXPECT_EQ(header(visitor.get("/"), "Location"), "/entrar");
  const site::Response entered = visitor.log_in("Ana", password);
  EXPECT_EQ(header(entered, "Location"), "/");
  const std::string cookie = header(entered, "Set-Cookie");
  EXPECT_TRUE(cookie.ends_with("; Path=/; HttpOnly; SameSite=Lax")) << cookie;
  EXPECT_TRUE(contains(visitor.get("/"), "Ana Moraes"));
  EXPECT_EQ(
      database_.rows("select situacao, estacao from sessaodeuso u, sessaoaplicativo a where a.rsessaodeuso = "
                     "u.oid and a.termino is null"),
      "1|203.0.113.7");
  EXPECT_EQ(header(visitor.post("/sair"), "Location"), "/entrar");
  EXPECT_EQ(database_.rows("select situacao from sessaodeuso where termino is not null"), "2");
  EXPECT_EQ(visitor.get("/empresas").status, 303);
}

TEST_F(Login, GivesANewSessionEachTimeAndEndsTheOldOne) {
  Visitor visitor = logged_in("ana");
  const std::string old = visitor.cookies["pradelis_sessao"];
  Visitor thief(site_);
  thief.cookies["pradelis_sessao"] = old;
  EXPECT_EQ(thief.get("/").status, 200);
  visitor.cookies.erase("pradelis_sessao");
  visitor.get("/entrar");
  visitor.cookies["pradelis_sessao"] = old;
  EXPECT_EQ(visitor.post("/entrar", {{"usuario", "ana"}, {"senha", password}}).status, 303);
  EXPECT_NE(visitor.cookies["pradelis_sessao"], old);
  EXPECT_EQ(thief.get("/").status, 303);
  EXPECT_EQ(number("select count(*) from sessaoaplicativo where termino is null"), 1);
}

TEST_F(Login, AnswersAlikeForUnknownUsersAndWrongPasswords) {
  std::vector<std::string> answers;
  for (const auto& [login, word] : Fields{{"ana", "errada"}, {"ninguem", "errada"}, {"ninguem", password}}) {
    Visitor visitor(site_);
    const site::Response response = visitor.log_in(login, word);
    EXPECT_EQ(response.status, 422);
    EXPECT_TRUE(contains(response, "Usuário ou senha inválidos!"));
    EXPECT_FALSE(contains(response, word));
    answers.push_back(replace_all(response.body, login, "X"));
    answers.back().erase(answers.back().find("name=\"_token\""), 60);
  }
  EXPECT_EQ(answers[0], answers[1]);
  EXPECT_EQ(answers[1], answers[2]);
}

TEST_F(Login, RefusesTextsThatCouldEndALiteral) {
  for (const Fields& fields :
       {Fields{{"usuario", "x' or '1'='1"}, {"senha", "a"}},
        Fields{{"usuario", "ana"}, {"senha", password}, {"senha_vendedor", "' or ''='"}}}) {
    Visitor visitor(site_);
    visitor.get("/entrar");
    const site::Response response = visitor.post("/entrar", fields);
    EXPECT_EQ(response.status, 422);
    EXPECT_TRUE(contains(response, "Não use aspas simples"));
  }
  // A quote in the password is a letter like any other.
  Visitor visitor(site_);
  EXPECT_TRUE(contains(visitor.log_in("ana", "' or '1'='1"), "Usuário ou senha inválidos!"));
}

TEST_F(Login, TakesASalespersonPasswordOfItsOwn) {
  database_.run("update vendedocad set senhaven = 'abre-te' where nome = 'Ana Moraes'");
  Visitor visitor(site_);
  EXPECT_TRUE(contains(visitor.log_in("ana", password),
                       "Não existe esse vendedor cadastrado no sistema de usuários!"));
  EXPECT_EQ(number("select count(*) from sessaoaplicativo where termino is null"), 0);
  EXPECT_EQ(visitor.log_in("ana", password, {{"senha_vendedor", "abre-te"}}).status, 303);
}

TEST_F(Login, SlowsGuessesDown) {
  Visitor visitor(site_);
  for (int i = 0; i < site::Throttle::free_per_account; ++i) {
    EXPECT_EQ(visitor.log_in("ana", "errada").status, 422);
  }
  const site::Response response = visitor.log_in("ana", password);
  EXPECT_EQ(response.status, 429);
  EXPECT_EQ(header(response, "Retry-After"), "1");
  EXPECT_TRUE(contains(response, "Tente de novo em 1 segundo."));
}

TEST_F(Login, GoesBackOnlyToThisSite) {
  for (const auto& [asked, given] : Fields{{"/empresas?busca=a", "/empresas?busca=a"},
                                           {"//mal.example", "/"},
                                           {"/\\mal.example", "/"},
                                           {"https://mal.example", "/"},
                                           {"empresas", "/"}}) {
    Visitor visitor(site_);
    visitor.get("/entrar");
    const site::Response response =
        visitor.post("/entrar?para=" + site::url_encode(asked), {{"usuario", "ana"}, {"senha", password}});
    EXPECT_EQ(header(response, "Location"), given) << asked;
  }
}

TEST_F(Login, KnowsItsOwnFormOnly) {
  Visitor visitor(site_);
  visitor.get("/entrar");
  const Fields right = {{"usuario", "ana"}, {"senha", password}};
  EXPECT_EQ(visitor.send("/entrar", right).status, 403);
  EXPECT_EQ(visitor.post("/entrar", {{"usuario", "ana"}, {"senha", password}, {"_token", "x"}}).status, 403);
  visitor.cookies.clear();
  EXPECT_EQ(visitor.post("/entrar", right).status, 403);
}

TEST_F(Login, EndsUsageSessionsWhenTheSiteCloses) {
  logged_in("ana");
  logged_in("bruno");
  site_.close();
  EXPECT_EQ(number("select count(*) from sessaoaplicativo where termino is null"), 0);
}

}  // namespace
}  // namespace pradelis::tests
