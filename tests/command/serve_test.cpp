#include <gtest/gtest.h>
#include <httplib.h>

#include <atomic>
#include <memory>
#include <set>
#include <thread>

#include "browser.h"
#include "database.h"
#include "tests/support/control_server.h"
#include "tests/support/database.h"
#include "tests/support/engine.h"

/// `pradelis serve` as browsers meet it: one host, and several that share a database.
namespace pradelis::command {
namespace {

/// A running host of the site.
class WebHost {
 public:
  explicit WebHost(const Database& database, const char* sessions = "database")
      : process_({"serve", "--database", database.url(), "--port", "0", "--sessions", sessions}),
        address_(process_.read_line()) {
    address_.pop_back();  // the slash at the end
  }

  const std::string& address() const { return address_; }
  Process::Outcome stop() { return process_.stop(); }

 private:
  Process process_;
  std::string address_;
};

class Serve : public testing::Test {
 protected:
  static void SetUpTestSuite() { demonstration_ = std::make_unique<Demonstration>(); }
  static void TearDownTestSuite() { demonstration_.reset(); }

  static const Demonstration& demonstration() { return *demonstration_; }
  static Browser logged_in(const WebHost& host, const char* login) {
    Browser browser;
    EXPECT_TRUE(browser.log_in(host.address(), login, demonstration_->password())) << login;
    return browser;
  }
  /// Registers a company through the pages. Result: its identifier, 0 when it was refused.
  static std::int32_t add_company(Browser& browser, const std::string& host, const std::string& name) {
    const std::string seller =
        demonstration_->value("select max(oid) from item_r where nome = 'Ana Beatriz Moraes'");
    return add_company(browser, host, name, seller);
  }
  static std::int32_t add_company(Browser& browser, const std::string& host, const std::string& name,
                                  const std::string& seller) {
    const Page page = browser.fill_in(host, "/empresas/nova",
                                      {{"nome", name},
                                       {"razao", name + " Ltda."},
                                       {"situacao", "2127"},
                                       {"vendedor", seller},
                                       {"cidade", "Campinas"}});
    return page.status == 303 ? page.redirected_to() : 0;
  }
  static int number(const std::string& sql) { return std::stoi(demonstration_->value(sql)); }

 private:
  static std::unique_ptr<Demonstration> demonstration_;
};

std::unique_ptr<Demonstration> Serve::demonstration_;

TEST_F(Serve, RefusesADatabaseThatLacksWhatItNeeds) {
  const Database database;
  const std::vector<std::string> serve = {"serve", "--database", database.url(), "--port", "0"};
  const Process::Outcome empty = run(serve);
  EXPECT_EQ(empty.status, 1);
  EXPECT_NE(empty.complaint.find("execute `pradelis init`"), std::string::npos) << empty.complaint;
  database.init();
  tests::SideConnection(database.url()).run("update instalacao set versao = 2");
  const Process::Outcome older = run(serve);
  EXPECT_EQ(older.status, 1);
  EXPECT_NE(older.complaint.find("na versão 2"), std::string::npos) << older.complaint;
}

TEST_F(Serve, ShowsTheDemonstrationAndStopsCleanly) {
  WebHost host(demonstration(), "memory");
  Browser stranger;
  EXPECT_EQ(stranger.get(host.address(), "/empresas").location, "/entrar?para=/empresas");
  Browser helena = logged_in(host, "HELENA");
  for (const char* target : {"/", "/agenda", "/negocios", "/negocios/quadro", "/empresas", "/produtos",
                             "/equipe", "/empresas/exportar", "/negocios/exportar"}) {
    EXPECT_EQ(helena.get(host.address(), target).status, 200) << target;
  }
  EXPECT_TRUE(helena.get(host.address(), "/").contains("Helena Prado Vasconcelos"));
  EXPECT_GT(number("select count(*) from sessaodeuso where oid > 100000 and termino is null"), 0);
  const Process::Outcome outcome = host.stop();
  EXPECT_EQ(outcome.status, 0) << outcome.complaint;
  EXPECT_EQ(number("select count(*) from sessaodeuso where oid > 100000 and termino is null"), 0);
}

TEST_F(Serve, KeepsAVisitorWhicheverHostHisRequestReaches) {
  WebHost first(demonstration());
  const WebHost second(demonstration());
  Browser ana = logged_in(first, "ANA");
  EXPECT_TRUE(ana.get(second.address(), "/").contains("Ana Beatriz Moraes"));

  // A form of one host is taken by the other, and its message shows on whichever page comes next, once.
  ana.get(first.address(), "/empresas/nova");
  const std::int32_t company = add_company(ana, second.address(), "Padaria Dois Lugares");
  ASSERT_GT(company, 0);
  const std::string page = "/empresas/" + std::to_string(company);
  EXPECT_TRUE(ana.get(first.address(), page).contains("Empresa cadastrada."));
  EXPECT_FALSE(ana.get(second.address(), page).contains("Empresa cadastrada."));

  // A host that stops logs nobody out.
  EXPECT_EQ(first.stop().status, 0);
  EXPECT_EQ(ana.get(second.address(), page).status, 200);
  const WebHost third(demonstration());
  EXPECT_EQ(ana.get(third.address(), page).status, 200);

  // Leaving on one host is leaving on all, and an old cookie opens nothing.
  Browser copy = ana;
  EXPECT_EQ(ana.post(third.address(), "/sair", {}).status, 303);
  EXPECT_EQ(copy.get(second.address(), page).status, 303);
}

TEST_F(Serve, KeepsItsVisitorsWhenTheDatabaseServerIsStartedAgain) {
  if (!tests::on_postgresql()) GTEST_SKIP() << "the embedded database goes away with the process only";
  const WebHost first(demonstration()), second(demonstration());
  Browser ana = logged_in(first, "ANA");
  EXPECT_EQ(ana.get(second.address(), "/empresas").status, 200);
  tests::control_server("restart -m fast");
  EXPECT_EQ(ana.get(first.address(), "/").status, 200);
  EXPECT_EQ(ana.get(second.address(), "/empresas").status, 200);
}

TEST_F(Serve, TellsAllHostsThatTheTeamHasChanged) {
  const WebHost first(demonstration()), second(demonstration());
  Browser helena = logged_in(first, "HELENA");
  Browser marcos = logged_in(second, "MARCOS");
  EXPECT_FALSE(marcos.get(second.address(), "/equipe").contains("Equipe Santos"));
  const std::string parent =
      demonstration().value("select max(oid) from item_r where nome = 'Regional Sudeste'");
  EXPECT_EQ(
      helena.fill_in(first.address(), "/equipe/grupos/novo", {{"nome", "Equipe Santos"}, {"pai", parent}})
          .status,
      303);
  EXPECT_TRUE(marcos.get(second.address(), "/equipe").contains("Equipe Santos"));
}

TEST_F(Serve, TakesRegistrationsOnTwoHostsAtOnce) {
  constexpr int each = 3;
  const WebHost first(demonstration()), second(demonstration());
  const std::string group =
      demonstration().value("select max(oid) from item_r where nome = 'Equipe Campinas'");
  std::atomic<int> registered = 0, refused = 0;
  const auto register_all = [&](const WebHost& host, const char* login, const char* prefix) {
    Browser browser = logged_in(host, login);
    for (int i = 0; i < each; ++i) {
      // The same logins on both hosts: the second to come is refused.
      const Page page = browser.fill_in(host.address(), "/equipe/vendedores/novo",
                                        {{"nome", std::string(prefix) + " " + std::to_string(i)},
                                         {"grupo", group},
                                         {"usuario", std::string(prefix) + std::to_string(i)},
                                         {"senha", "senha-boa"},
                                         {"cidade", "Campinas"}});
      ++(page.status == 303 ? registered : refused);
    }
  };
  std::jthread other([&] { register_all(second, "MARCOS", "leste"); });
  register_all(first, "HELENA", "oeste");
  other.join();
  EXPECT_EQ(registered, 2 * each);
  EXPECT_EQ(refused, 0);
  EXPECT_EQ(number("select count(*) from usuario_v where nome like 'LESTE%' or nome like 'OESTE%'"),
            2 * each);
  EXPECT_EQ(number("select count(*) from vendedocad where nome like 'leste%' or nome like 'oeste%'"),
            2 * each);
  EXPECT_TRUE(Browser().log_in(first.address(), "leste0", "senha-boa"));
}

TEST_F(Serve, AnswersSixteenVisitorsAtOnceOnTwoHosts) {
  constexpr int threads = 16, requests = 4;
  const WebHost first(demonstration()), second(demonstration());
  const char* const logins[] = {"HELENA", "MARCOS", "ANA", "RAFAEL"};
  std::vector<Browser> people;
  for (const char* login : logins) people.push_back(logged_in(first, login));
  const std::string helena =
      demonstration().value("select max(oid) from item_r where nome = 'Helena Prado Vasconcelos'");
  std::atomic<int> failures = 0;
  std::vector<std::jthread> running;
  for (int thread = 0; thread < threads; ++thread) {
    running.emplace_back([&, thread] {
      Browser browser = people[static_cast<std::size_t>(thread) % people.size()];
      for (int request = 0; request < requests; ++request) {
        const std::string& host = (thread + request) % 2 == 0 ? first.address() : second.address();
        for (const char* target : {"/", "/agenda", "/negocios", "/empresas?q=a"}) {
          const Page page = browser.get(host, target);
          if (page.status != 200 || !page.contains("</html>")) ++failures;
        }
        const std::string name = "Loja " + std::to_string(thread) + " " + std::to_string(request);
        if (thread % 4 == 0 && add_company(browser, host, name, helena) == 0) ++failures;
      }
    });
  }
  running.clear();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(number("select count(distinct oid) from item_r where cid = 46 and nome like 'Loja %'"), 16);
}

TEST_F(Serve, RefusesADatabaseThatIsNotInitialised) {
  const Database empty;
  for (const char* sessions : {"memory", "database"}) {
    const Process::Outcome outcome =
        run({"serve", "--database", empty.url(), "--port", "0", "--sessions", sessions});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.complaint.find("pradelis init"), std::string::npos) << outcome.complaint;
  }
  EXPECT_EQ(run({"serve", "--database", empty.url(), "--sessions", "nuvem"}).status, 2);
}

}  // namespace
}  // namespace pradelis::command
