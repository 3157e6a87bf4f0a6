#include "site/csv.h"
#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

TEST(Csv, IsHarmlessAndGivesTextsBack) {
  for (const auto& [text, cell] : std::initializer_list<std::pair<const char*, const char*>>{
           {"", ""},
           {"Ana", "Ana"},
           {"a;b", "\"a;b\""},
           {"diz \"oi\"", "\"diz \"\"oi\"\"\""},
           {"linha 1\r\nlinha 2", "\"linha 1\r\nlinha 2\""},
           {"=1+1", "'=1+1"},
           {"+55", "'+55"},
           {"-1", "'-1"},
           {"@soma", "'@soma"},
           {"\tx", "\"'\tx\""},
           {"'t Hooft", "''t Hooft"},
           {"O'Brien", "O'Brien"}}) {
    site::CsvWriter csv;
    csv.text(text).end_row();
    EXPECT_EQ(csv.take(), "\xEF\xBB\xBF" + std::string(cell) + "\r\n");
    const std::string unquoted = replace_all(cell, "\"\"", "\x01");
    const std::string plain = replace_all(replace_all(unquoted, "\"", ""), "\x01", "\"");
    EXPECT_EQ(site::plain_cell(plain), text);
  }
  EXPECT_EQ(site::plain_cell("'"), "'");
}

class Exports : public SiteTest {
 protected:
  Exports() {
    company_ = add_company(ana_visitor_, "=Padaria; \"Central\"");
    add_contact(ana_visitor_, company_, "Rita");
    add_contact(ana_visitor_, company_, "Zeca");
    deal_ = add_deal(ana_visitor_, company_, "Reforma");
  }

  Visitor ana_visitor_ = logged_in("ana");
  std::int32_t company_ = 0, deal_ = 0;
};

TEST_F(Exports, HoldWhatTheListsHold) {
  add_company(ana_visitor_, "Quitanda", true);
  const site::Response companies = ana_visitor_.get("/empresas/exportar");
  EXPECT_EQ(companies.content_type, "text/csv; charset=utf-8");
  EXPECT_TRUE(header(companies, "Content-Disposition").starts_with("attachment; filename=\"empresas-20"));
  for (const char* row :
       {"\xEF\xBB\xBF"
        "Empresa;Razão social;",
        "\r\n\"'=Padaria; \"\"Central\"\"\";\"'=Padaria; \"\"Central\"\" Ltda.\";Prospecto;"
        "Ana Moraes;;;;;Campinas;;",
        ";;Rita;Comprador\r\n", ";;Zeca;Comprador\r\n", "\r\nQuitanda;Quitanda Ltda.;Cliente;"}) {
    EXPECT_TRUE(contains(companies, row)) << row << "\n" << companies.body;
  }
  const site::Response clients = ana_visitor_.get("/empresas/exportar?situacao=clientes&busca=quit");
  EXPECT_TRUE(contains(clients, "Quitanda"));
  EXPECT_FALSE(contains(clients, "Padaria"));

  ana_visitor_.post(concat("/negocios/", deal_, "/fechar"), {{"data", "2020-01-02"}, {"valor", "1.234,56"}});
  const site::Response deals = ana_visitor_.get("/negocios/exportar?estado=fechados");
  EXPECT_TRUE(contains(deals, "\r\nReforma;")) << deals.body;
  EXPECT_TRUE(contains(deals, ";Fechado;")) << deals.body;
  EXPECT_TRUE(contains(deals, ";1500,00;02/01/2020;1234,56;;\r\n")) << deals.body;
  EXPECT_FALSE(contains(ana_visitor_.get("/negocios/exportar"), "Reforma"));
  EXPECT_TRUE(contains(ana_visitor_.get("/cidades/exportar?busca=camp"), "\r\nCampinas;São Paulo;19\r\n"));
}

TEST_F(Exports, HoldTheAgendaAsItIsLookedAt) {
  add_activity(ana_visitor_, company_, 0, "Ligar; logo", {{"proximo", "2099-01-04"}});
  EXPECT_TRUE(contains(ana_visitor_.get("/agenda/exportar"),
                       "\r\n04/01/2099;\"'=Padaria; \"\"Central\"\"\";;;Ana Moraes;\"Ligar; logo\"\r\n"));
  EXPECT_TRUE(contains(ana_visitor_.get("/agenda/exportar?ver=sem-plano"), "\r\nReforma;"));
  EXPECT_FALSE(contains(ana_visitor_.get("/agenda/exportar?ver=parados"), "Reforma"));
}

TEST_F(Exports, HoldNothingOfOtherTeams) {
  Visitor bruno = logged_in("bruno");
  Visitor helena = logged_in("helena");
  for (const std::string& target :
       {std::string("/empresas/exportar"), std::string("/negocios/exportar?estado=todos"),
        concat("/negocios/exportar?estado=todos&vendedor=", ana_),
        concat("/agenda/exportar?ver=sem-plano&vendedor=", ana_)}) {
    EXPECT_TRUE(contains(helena.get(target), "Padaria")) << target;
    const site::Response response = bruno.get(target);
    EXPECT_EQ(response.status, 200);
    for (const char* secret : {"Padaria", "Reforma", "Rita"})
      EXPECT_FALSE(contains(response, secret)) << target;
  }
}

}  // namespace
}  // namespace pradelis::tests
