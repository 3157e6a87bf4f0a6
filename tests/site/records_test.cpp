#include <chrono>

#include "site/router.h"
#include "tests/site/visitor.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

class Records : public SiteTest {
 protected:
  std::string state(std::int32_t deal) {
    return database_.rows(concat(
        "select fechamento is null, valorfechamento, rmotivo from crm_pos_negocio where oid = ", deal));
  }

  Visitor visitor_ = logged_in("ana");
};

constexpr const char* awkward = "O'Brien <b>\"&";
constexpr const char* escaped = "O&#39;Brien &lt;b&gt;&quot;&amp;";

TEST_F(Records, KeepAndShowAwkwardTextsAsTyped) {
  const std::int32_t company = add_company(visitor_, awkward);
  EXPECT_EQ(to_text(database_.value(concat("select nome from item where oid = ", company))), awkward);
  add_contact(visitor_, company, awkward);
  add_deal(visitor_, company, awkward);
  for (const std::string& target : {std::string("/"), std::string("/empresas"), concat("/empresas/", company),
                                    concat("/empresas/", company, "/alterar"), std::string("/negocios"),
                                    "/empresas?busca=" + site::url_encode(awkward)}) {
    const site::Response page = visitor_.get(target);
    EXPECT_TRUE(contains(page, escaped)) << target;
    EXPECT_FALSE(contains(page, "<b>")) << target;
  }
  EXPECT_TRUE(contains(visitor_.get("/empresas?busca=100%25"), "Nada encontrado"));
}

TEST_F(Records, KeepWhatWasTypedWhenSomethingIsWrong) {
  const std::int32_t before = version();
  const site::Response response = visitor_.post("/empresas/nova", {{"nome", awkward},
                                                                   {"razao", ""},
                                                                   {"situacao", "2127"},
                                                                   {"vendedor", to_text(ana_)},
                                                                   {"cidade", "Atlântida"},
                                                                   {"observacao", "linha 1\r\nlinha 2"}});
  EXPECT_EQ(response.status, 422);
  for (const char* text : {escaped, "Atlântida", "linha 1\r\nlinha 2", "Preencha este campo.",
                           "Não há cidade cadastrada com esse nome.", "aria-invalid=\"true\""}) {
    EXPECT_TRUE(contains(response, text)) << text;
  }
  EXPECT_EQ(version(), before);
}

TEST_F(Records, KeepWhatWasTypedWhileAnotherProgramHoldsTheDatabase) {
  settings_.command_timeout = 1;
  site::Site impatient(settings_);
  Visitor visitor(impatient);
  visitor.log_in("ana", password);
  visitor.get("/empresas/nova");
  const Fields company = {{"nome", awkward},
                          {"razao", "x"},
                          {"situacao", "2127"},
                          {"vendedor", to_text(ana_)},
                          {"cidade", "Campinas"}};
  SideConnection holder(database_.connection_string());
  holder.run("begin immediate");
  const auto start = std::chrono::steady_clock::now();
  const site::Response refused = visitor.post("/empresas/nova", company);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
  EXPECT_EQ(refused.status, 422);
  EXPECT_TRUE(contains(refused, "O banco de dados não aceitou a operação"));
  EXPECT_TRUE(contains(refused, escaped));
  holder.run("rollback");
  EXPECT_EQ(visitor.post("/empresas/nova", company).status, 303);
}

TEST_F(Records, ShowTheComponentsOwnRefusals) {
  const std::int32_t company = add_company(visitor_, "Padaria");
  const site::Response twice = visitor_.post("/empresas/nova", {{"nome", "PADARIA"},
                                                                {"razao", "x"},
                                                                {"situacao", "2127"},
                                                                {"vendedor", to_text(ana_)},
                                                                {"cidade", "Campinas"}});
  EXPECT_TRUE(contains(twice, "Já Existe uma pessoa Jurídica Cadastrada com esse nome."));
  add_deal(visitor_, company, "Reforma");
  const site::Response deal =
      visitor_.post(concat("/empresas/", company, "/negocios/novo"),
                    {{"nome", "Reforma"}, {"valor", "1"}, {"vendedor", to_text(ana_)}});
  EXPECT_TRUE(contains(deal, "Já existe um Negócio dessa Empresa com esse Nome"));
  EXPECT_TRUE(contains(visitor_.post("/cidades/nova", {{"nome", "CAMPINAS"}, {"estado", "2325"}}),
                       "Já existe uma cidade com esse nome"));
}

TEST_F(Records, ChangeCompaniesAndContacts) {
  const std::int32_t company = add_company(visitor_, "Padaria");
  const std::int32_t contact = add_contact(visitor_, company, "Rita");
  EXPECT_EQ(visitor_
                .post(concat("/empresas/", company, "/alterar"),
                      {{"nome", "Nova"}, {"razao", "Nova S.A."}, {"cidade", "CAMPINAS"}, {"rua", "Rua B"}})
                .status,
            303);
  EXPECT_EQ(visitor_
                .post(concat("/empresas/", company, "/contatos/", contact, "/alterar"),
                      {{"nome", "Rita Nunes"}, {"cargo", to_text(role_)}})
                .status,
            303);
  const site::Response page = visitor_.get(concat("/empresas/", company));
  for (const char* text : {"Nova S.A.", "Rua B", "Campinas", "Rita Nunes", "Contato alterado."}) {
    EXPECT_TRUE(contains(page, text)) << text;
  }
}

TEST_F(Records, TakeDealsThroughTheirStates) {
  const std::int32_t deal = add_deal(visitor_, add_company(visitor_, "Padaria"), "Reforma");
  const std::string page = concat("/negocios/", deal);
  const std::string yesterday = "2020-01-02";
  const Fields closing = {{"data", yesterday}, {"valor", "1.234,56"}};
  EXPECT_EQ(visitor_.post(page + "/reabrir").status, 422);
  EXPECT_EQ(visitor_.post(page + "/fechar", {{"data", "2099-01-01"}, {"valor", "1"}}).status, 422);
  EXPECT_EQ(visitor_.post(page + "/fechar", closing).status, 303);
  EXPECT_EQ(state(deal), "0|1234,56|null");
  EXPECT_TRUE(contains(visitor_.get("/negocios?estado=fechados"), "R$\u00a01.234,56"));
  EXPECT_FALSE(contains(visitor_.get("/negocios?estado=abertos"), "Reforma"));

  const Fields loss = {{"data", yesterday}, {"motivo", to_text(reason_)}, {"observacao", "caro"}};
  const site::Response late = visitor_.post(page + "/perder", loss);
  EXPECT_TRUE(contains(late, "Este negócio já não está aberto."));
  EXPECT_EQ(visitor_.post(page + "/reabrir").status, 303);
  EXPECT_EQ(state(deal), "1|null|null");
  EXPECT_EQ(visitor_.post(page + "/perder", loss).status, 303);
  EXPECT_EQ(state(deal), concat("0|null|", reason_));
  EXPECT_TRUE(contains(visitor_.get(page), "caro"));
}

TEST_F(Records, ChangeDealsWithTheirClasses) {
  const std::int32_t company = add_company(visitor_, "Padaria");
  const std::int32_t contact = add_contact(visitor_, company, "Rita");
  const std::int32_t deal = add_deal(visitor_, company, "Reforma");
  const std::string page = concat("/negocios/", deal);
  EXPECT_EQ(visitor_
                .post(page + "/alterar", {{"data", "05/03/2027"},
                                          {"valor", "2.000,50"},
                                          {"contato", to_text(contact)},
                                          {"classes", to_text(class_)},
                                          {"observacao", "nota"}})
                .status,
            303);
  EXPECT_EQ(database_.rows(concat("select valorprovavel, rcontato, rclasseproduto from crm_pos_negocio n,"
                                  " crm_classeprodutos_negocio k where k.rnegocio = n.oid and n.oid = ",
                                  deal)),
            concat("2000,5|", contact, "|", class_));
  const site::Response form = visitor_.get(page + "/alterar");
  for (const char* text : {"value=\"2027-03-05\"", "value=\"2.000,50\"", "checked", "selected", "nota"}) {
    EXPECT_TRUE(contains(form, text)) << text;
  }
}

TEST_F(Records, PageThroughListsBothWays) {
  std::vector<std::string> names;
  for (int i = 10; i < 70; ++i) {
    names.push_back(concat("Loja ", i));
    add_company(visitor_, names.back());
  }
  const auto shown = [&](const site::Response& page) {
    std::string found;
    for (const std::string& name : names) {
      if (contains(page, ">" + name + "<")) found += name.substr(5) + " ";
    }
    return found.substr(0, 3) + found.substr(found.size() < 3 ? 0 : found.size() - 3);
  };
  const auto linked = [](const site::Response& page, const char* relation) {
    const std::size_t mark = page.body.find(std::string("rel=\"") + relation);
    if (mark == std::string::npos) return std::string();
    const std::size_t begin = page.body.rfind("href=\"", mark) + 6;
    return replace_all(page.body.substr(begin, page.body.find('"', begin) - begin), "&amp;", "&");
  };
  site::Response page = visitor_.get("/empresas?busca=loja");
  EXPECT_EQ(shown(page), "10 34 ");
  EXPECT_EQ(linked(page, "prev"), "");
  page = visitor_.get(replace_all(linked(page, "next"), "&#x2F;", "/"));
  EXPECT_EQ(shown(page), "35 59 ");
  page = visitor_.get(replace_all(linked(page, "next"), "&#x2F;", "/"));
  EXPECT_EQ(shown(page), "60 69 ");
  EXPECT_EQ(linked(page, "next"), "");
  page = visitor_.get(replace_all(linked(page, "prev"), "&#x2F;", "/"));
  EXPECT_EQ(shown(page), "35 59 ");
  page = visitor_.get(replace_all(linked(page, "prev"), "&#x2F;", "/"));
  EXPECT_EQ(shown(page), "10 34 ");
  EXPECT_EQ(linked(page, "prev"), "");
}

}  // namespace
}  // namespace pradelis::tests
