#include "component/crm.h"
#include "dataaccess/schema/fixed.h"
#include "site/router.h"
#include "tests/site/visitor.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

/// Ana has a company with a contact and a deal; Bruno works in another group, Helena leads both.
class Visibility : public SiteTest {
 protected:
  Visibility() {
    company_ = add_company(ana_visitor_, "Padaria Central");
    contact_ = add_contact(ana_visitor_, company_, "Rita Nunes");
    deal_ = add_deal(ana_visitor_, company_, "Reforma da loja");
    activity_ = add_activity(ana_visitor_, company_, deal_, "Pediu amostra", {{"proximo", "2099-01-04"}});
    file_ = add_file(ana_visitor_, company_, "notas.txt", "texto da Rita");
  }

  /// All addresses that name Ana's records.
  std::vector<site::Route> guessed() const {
    std::vector<site::Route> routes;
    for (site::Route route : site_.router().routes()) {
      std::size_t place = route.pattern.find("{}");
      if (place == std::string::npos || route.pattern.starts_with("/equipe")) continue;
      const std::int32_t record = route.pattern.starts_with("/negocios")     ? deal_
                                  : route.pattern.starts_with("/atividades") ? activity_
                                  : route.pattern.starts_with("/arquivos")   ? file_
                                                                             : company_;
      route.pattern.replace(place, 2, to_text(record));
      place = route.pattern.find("{}");
      if (place != std::string::npos) route.pattern.replace(place, 2, to_text(contact_));
      routes.push_back(route);
    }
    return routes;
  }

  Visitor ana_visitor_ = logged_in("ana");
  std::int32_t company_ = 0, contact_ = 0, deal_ = 0, activity_ = 0, file_ = 0;
};

TEST_F(Visibility, KeepsOthersFromGuessedAddresses) {
  Visitor bruno = logged_in("bruno");
  const std::int32_t before = version();
  ASSERT_GT(guessed().size(), 20U);
  for (const site::Route& route : guessed()) {
    const Fields fields = {
        {"nome", "x"},  {"vendedor", to_text(bruno_)}, {"cargo", to_text(role_)}, {"data", "2026-01-02"},
        {"valor", "1"}, {"motivo", to_text(reason_)}};
    const site::Response response =
        route.method == "GET" ? bruno.get(route.pattern) : bruno.post(route.pattern, fields);
    EXPECT_EQ(response.status, 404) << route.method << " " << route.pattern;
    for (const char* secret : {"Padaria", "Rita", "Reforma"})
      EXPECT_FALSE(contains(response, secret)) << route.pattern;
  }
  EXPECT_EQ(version(), before);
}

TEST_F(Visibility, KeepsOthersFromListsAndSearches) {
  Visitor bruno = logged_in("bruno");
  Visitor helena = logged_in("helena");
  for (const char* target : {"/", "/empresas", "/empresas?busca=padaria", "/negocios",
                             "/negocios?estado=todos", "/negocios?busca=reforma", "/agenda"}) {
    for (const char* name : {"Padaria Central", "Reforma da loja"}) {
      EXPECT_FALSE(contains(bruno.get(target), name)) << target;
    }
    EXPECT_TRUE(contains(helena.get(target), "Padaria Central")) << target;
  }
  EXPECT_EQ(bruno.get(concat("/empresas?apos=", company_)).status, 404);
  EXPECT_EQ(bruno.get(concat("/negocios?antes=", deal_)).status, 404);
  EXPECT_EQ(bruno.get(concat("/agenda?apos=", activity_)).status, 404);
}

TEST_F(Visibility, OffersNobodyElseAsOwner) {
  const std::int32_t before = version();
  for (const std::string& target :
       {concat("/empresas/", company_, "/passar"), concat("/negocios/", deal_, "/passar")}) {
    const site::Response response = ana_visitor_.post(target, {{"vendedor", to_text(bruno_)}});
    EXPECT_EQ(response.status, 422) << target;
    EXPECT_TRUE(contains(response, "Escolha uma das opções oferecidas."));
  }
  EXPECT_EQ(version(), before);
  Visitor helena = logged_in("helena");
  EXPECT_EQ(helena.post(concat("/negocios/", deal_, "/passar"), {{"vendedor", to_text(bruno_)}}).status, 303);
  EXPECT_EQ(helena.post(concat("/empresas/", company_, "/passar"), {{"vendedor", to_text(bruno_)}}).status,
            303);
  EXPECT_EQ(ana_visitor_.get(concat("/empresas/", company_)).status, 404);
  EXPECT_EQ(logged_in("bruno").get(concat("/negocios/", deal_)).status, 200);
}

TEST_F(Visibility, ShowsClientsToAllButTheirDealsToTheirTeam) {
  Visitor bruno = logged_in("bruno");
  EXPECT_EQ(ana_visitor_.post(concat("/empresas/", company_, "/cliente")).status, 303);
  const site::Response page = bruno.get(concat("/empresas/", company_));
  EXPECT_TRUE(contains(page, "Padaria Central"));
  EXPECT_FALSE(contains(page, "Reforma da loja"));
  EXPECT_FALSE(contains(page, "Pediu amostra"));
  EXPECT_EQ(bruno.get(concat("/negocios/", deal_)).status, 404);
  EXPECT_EQ(bruno.post(concat("/empresas/", company_, "/passar"), {{"vendedor", to_text(bruno_)}}).status,
            404);
}

/// Another program may delete a company and leave its deals.
TEST_F(Visibility, HidesDealsOfDeletedCompanies) {
  {
    const site::Apartment apartment(settings_);
    const auto crm = std::make_shared<component::CRM>();
    crm->Excluir("Padaria Central", "", ana_, today(), dataaccess::fixed::application,
                 dataaccess::fixed::class_company, company_);
  }
  for (const char* target :
       {"/", "/negocios", "/negocios/quadro", "/negocios/exportar", "/agenda", "/agenda?ver=sem-plano"}) {
    EXPECT_FALSE(contains(ana_visitor_.get(target), "Reforma da loja")) << target;
  }
}

TEST_F(Visibility, TakesContactsOfTheCompanyOnly) {
  const std::int32_t other = add_company(ana_visitor_, "Outra");
  EXPECT_EQ(ana_visitor_.get(concat("/empresas/", other, "/contatos/", contact_, "/alterar")).status, 404);
  EXPECT_EQ(
      ana_visitor_
          .post(concat("/empresas/", other, "/negocios/novo"),
                {{"nome", "n"}, {"valor", "1"}, {"vendedor", to_text(ana_)}, {"contato", to_text(contact_)}})
          .status,
      422);
}

TEST_F(Visibility, FollowsChangesOfGroupsAtOnce) {
  Visitor helena = logged_in("helena");
  const Fields person = {{"nome", "Caio Lima"},
                         {"grupo", to_text(west_)},
                         {"usuario", "caio"},
                         {"senha", "12345678"},
                         {"cidade", "Campinas"}};
  EXPECT_EQ(helena.post("/equipe/vendedores/novo", person).status, 303);
  Visitor caio(site_);
  EXPECT_EQ(caio.log_in("caio", "12345678").status, 303);
  caio.person = number("select oid from item where nome = 'Caio Lima'");
  caio.get("/empresas/nova");
  const std::int32_t company = add_company(caio, "Novidade");
  EXPECT_EQ(helena.get(concat("/empresas/", company)).status, 200);
  EXPECT_EQ(ana_visitor_.get(concat("/empresas/", company)).status, 404);
}

using Administration = SiteTest;

TEST_F(Administration, IsForGroupsBelowOnesOwn) {
  Visitor ana = logged_in("ana");
  Visitor helena = logged_in("helena");
  Visitor maintenance = logged_in("TARVONEL");
  EXPECT_FALSE(contains(ana.get("/"), "href=\"/equipe\""));
  EXPECT_EQ(ana.get("/equipe").status, 404);
  EXPECT_EQ(ana.post("/equipe/grupos/novo", {{"nome", "X"}, {"pai", to_text(east_)}}).status, 404);
  EXPECT_EQ(helena.get(concat("/equipe/grupos/", top_, "/alterar")).status, 404);
  EXPECT_EQ(helena.get("/listas").status, 404);
  EXPECT_EQ(helena.post("/equipe/grupos/novo", {{"nome", "X"}, {"pai", to_text(top_)}}).status, 422);
  EXPECT_EQ(helena.post("/equipe/grupos/novo", {{"nome", "X"}}).status, 422);
  EXPECT_EQ(helena.post("/equipe/grupos/novo", {{"nome", "Interior"}, {"pai", to_text(east_)}}).status, 303);
  EXPECT_TRUE(contains(helena.get("/equipe"), "Interior"));
  EXPECT_FALSE(contains(helena.get("/equipe"), "Diretoria"));
  EXPECT_EQ(maintenance.post("/equipe/grupos/novo", {{"nome", "Novo topo"}}).status, 303);
  const site::Response team = maintenance.get("/equipe");
  EXPECT_TRUE(contains(team, "Novo topo") && contains(team, "Diretoria") && contains(team, "Interior"));
  EXPECT_EQ(
      helena.post(concat("/equipe/grupos/", west_, "/alterar"), {{"nome", "Poente"}, {"pai", to_text(top_)}})
          .status,
      303);
  EXPECT_EQ(number("select count(*) from item where nome = 'Poente' and rescopo = " + to_text(top_)), 1);
}

TEST_F(Administration, RegistersSalespeopleWhoCanLogIn) {
  Visitor helena = logged_in("helena");
  Fields person = {{"nome", "Caio"},
                   {"grupo", to_text(east_)},
                   {"usuario", "caio'"},
                   {"senha", "curta"},
                   {"cidade", "Lugar nenhum"}};
  const site::Response refused = helena.post("/equipe/vendedores/novo", person);
  for (const char* error : {"Não use aspas simples", "ao menos 8 caracteres", "Não há cidade cadastrada"}) {
    EXPECT_TRUE(contains(refused, error)) << error;
  }
  EXPECT_FALSE(contains(refused, "curta"));
  person = {{"nome", "Caio"},
            {"grupo", to_text(east_)},
            {"usuario", "ana"},
            {"senha", "12345678"},
            {"cidade", "Campinas"}};
  EXPECT_TRUE(contains(helena.post("/equipe/vendedores/novo", person),
                       "Já existe o vendedor ANA no banco de dados."));
  person[2].second = "caio";
  EXPECT_EQ(helena.post("/equipe/vendedores/novo", person).status, 303);
  EXPECT_EQ(database_.rows("select nome, codger from vendedocad where nome = 'Caio'"),
            concat("Caio|", number("select codvend from vendedocad where nome = 'Helena Prado'")));
  EXPECT_EQ(number("select count(*) from vendedocad where senhaven like '%12345678%'"), 0);
  Visitor caio(site_);
  EXPECT_EQ(caio.log_in("CAIO", "12345678").status, 303);
}

}  // namespace
}  // namespace pradelis::tests
