#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

class Deletions : public SiteTest {
 protected:
  Deletions() {
    company_ = add_company(ana_visitor_, "Padaria Central");
    contact_ = add_contact(ana_visitor_, company_, "Rita");
    deal_ = add_deal(ana_visitor_, company_, "Reforma");
    activity_ = add_activity(ana_visitor_, company_, deal_, "Visita");
    page_ = concat("/empresas/", company_);
  }

  std::string entered() {
    return database_.rows("select nome, cid, excluidopor from excluido order by registro");
  }

  Visitor ana_visitor_ = logged_in("ana"), helena_visitor_ = logged_in("helena"),
          bruno_visitor_ = logged_in("bruno");
  std::int32_t company_ = 0, contact_ = 0, deal_ = 0, activity_ = 0;
  std::string page_;
};

TEST_F(Deletions, ShowWhatGoesWithACompanyAndTakeIt) {
  add_file(ana_visitor_, company_, "notas.txt", "x");
  const site::Response ask = ana_visitor_.get(page_ + "/excluir");
  for (const char* line : {"1 contato: Rita", "1 negócio: Reforma", "1 atividade", "1 arquivo"}) {
    EXPECT_TRUE(contains(ask, line)) << line << ask.body;
  }
  // What hangs below has grown since: the visitor looks again.
  add_contact(helena_visitor_, company_, "Zeca");
  const site::Response told = ana_visitor_.post(page_ + "/excluir");
  EXPECT_EQ(told.status, 422);
  EXPECT_TRUE(contains(told, "2 contatos: Rita, Zeca"));
  EXPECT_EQ(entered(), "");
  EXPECT_EQ(ana_visitor_.post(page_ + "/excluir").status, 303);
  EXPECT_EQ(entered(), concat("Ligação|16202|", ana_, "\nReforma|16075|", ana_, "\nRita|45|", ana_,
                              "\nZeca|45|", ana_, "\nPadaria Central|46|", ana_));
  for (const std::string& target :
       {page_, concat("/negocios/", deal_), concat("/atividades/", activity_, "/alterar")}) {
    EXPECT_EQ(ana_visitor_.get(target).status, 404) << target;
  }
  for (const char* target : {"/", "/empresas", "/negocios?estado=todos", "/agenda", "/empresas/exportar"}) {
    EXPECT_FALSE(contains(ana_visitor_.get(target), "Padaria Central</a>")) << target;
  }
  // The name is free again.
  add_company(ana_visitor_, "Padaria Central");
}

TEST_F(Deletions, AreForThoseWhoSeeTheOwner) {
  ana_visitor_.post(page_ + "/cliente");
  ASSERT_EQ(bruno_visitor_.get(page_).status, 200);
  const std::string contact = concat(page_, "/contatos/", contact_);
  for (const std::string& target :
       {page_, contact, concat("/atividades/", activity_), concat("/negocios/", deal_)}) {
    EXPECT_EQ(bruno_visitor_.get(target + "/excluir").status, 404) << target;
    EXPECT_EQ(bruno_visitor_.post(target + "/excluir").status, 404) << target;
  }
  // A deal of another team with the company keeps it.
  add_deal(bruno_visitor_, company_, "De Bruno");
  const site::Response ask = ana_visitor_.get(page_ + "/excluir");
  EXPECT_TRUE(contains(ask, "Há negócios de outras equipes") && !contains(ask, "De Bruno"));
  EXPECT_EQ(ana_visitor_.post(page_ + "/excluir").status, 422);
  EXPECT_EQ(entered(), "");
  EXPECT_EQ(helena_visitor_.post(page_ + "/excluir").status, 303);
}

TEST_F(Deletions, OfSmallThingsLeaveTheRest) {
  const std::string contact = concat(page_, "/contatos/", contact_, "/excluir");
  EXPECT_EQ(ana_visitor_.post(contact).status, 303);
  EXPECT_EQ(ana_visitor_.post(concat("/atividades/", activity_, "/excluir")).status, 303);
  const site::Response company = ana_visitor_.get(page_);
  EXPECT_TRUE(contains(company, "Reforma") && !contains(company, ">Rita<") && !contains(company, "Visita"));
  EXPECT_EQ(ana_visitor_.post(concat("/negocios/", deal_, "/excluir")).status, 303);
  EXPECT_FALSE(contains(ana_visitor_.get(page_), "Reforma</a>"));

  const std::string city = concat("/cidades/", number("select max(oid) from cidade"), "/excluir");
  EXPECT_EQ(ana_visitor_.get(city).status, 404);
  EXPECT_TRUE(contains(helena_visitor_.get(city), "endereços continuam nesta cidade"));
  EXPECT_EQ(helena_visitor_.post(city).status, 303);
  EXPECT_FALSE(contains(ana_visitor_.get("/cidades"), "Campinas"));
  // The company keeps it as long as nobody writes another one.
  Fields fields = {{"nome", "Central"}, {"razao", "Central"}, {"cidade", "Campinas"}};
  EXPECT_EQ(ana_visitor_.post(page_ + "/alterar", fields).status, 303);
  EXPECT_TRUE(contains(ana_visitor_.get(page_), "Campinas"));
}

TEST_F(Deletions, OfCategoriesAndChoicesSpareWhatIsInUse) {
  Visitor keeper = logged_in("TARVONEL");
  keeper.post("/categorias/nova", {{"nome", "<Comércio>"}});
  const std::int32_t root = number("select max(oid) from categoria");
  keeper.post("/categorias/nova", {{"nome", "Padarias"}, {"pai", to_text(root)}});
  const std::int32_t leaf = number("select max(oid) from categoria");
  ana_visitor_.post(page_ + "/categorias", {{"antes", ""}, {"categoria", to_text(leaf)}});
  const std::string category = concat("/categorias/", root, "/excluir");
  EXPECT_EQ(helena_visitor_.get(category).status, 404);
  const site::Response ask = keeper.get(category);
  EXPECT_TRUE(contains(ask, "Abaixo dela: Padarias") && contains(ask, "1 empresa deixa de tê-la"))
      << ask.body;
  EXPECT_EQ(keeper.post(category).status, 303);
  EXPECT_EQ(entered(), "Padarias|7|7\n<Comércio>|7|7");
  EXPECT_FALSE(contains(ana_visitor_.get(page_), ">Padarias<"));

  keeper.post("/campos/listas/nova", {{"nome", "Porte"}});
  const std::int32_t list = number("select max(oid) from listadeobjetos");
  keeper.post(concat("/campos/listas/", list, "/nova"), {{"nome", "Grande"}});
  const std::int32_t choice = number("select max(oid) from categoria");
  keeper.post("/campos/novo", {{"rotulo", "Porte"}, {"tipo", "2"}, {"lista", to_text(list)}});
  const std::int32_t field = number("select max(oid) from dadoadicional");
  const auto choose = [&](const std::string& chosen) {
    return ana_visitor_.post(
        page_ + "/campos",
        {{"ADITIVO_TOTAL", "1"}, {"ADITIVO_DEFINICAO1", to_text(field)}, {"ADITIVO_VALOR1", chosen}});
  };
  EXPECT_EQ(choose(to_text(choice)).status, 303);
  EXPECT_TRUE(
      contains(keeper.post(concat("/categorias/", choice, "/excluir")), "1 registro tem esta opção."));
  EXPECT_EQ(choose("0").status, 303);
  keeper.get(concat("/categorias/", choice, "/excluir"));
  EXPECT_EQ(keeper.post(concat("/categorias/", choice, "/excluir")).status, 303);
  EXPECT_EQ(keeper.post(concat("/categorias/", role_, "/excluir")).status, 303);
  EXPECT_TRUE(contains(ana_visitor_.get(page_), "Comprador"));
  EXPECT_FALSE(contains(ana_visitor_.get(page_ + "/contatos/novo"), "Comprador"));
  for (const std::int32_t fixed : {2121, 2201, 2301, company_}) {
    EXPECT_EQ(keeper.get(concat("/categorias/", fixed, "/excluir")).status, 404) << fixed;
  }
}

TEST_F(Deletions, StandInTheRegisterOfThoseWhoMaySeeThem) {
  const char* awkward = "O'Brien <b>\"&";
  ana_visitor_.post(concat(page_, "/excluir"));
  const std::int32_t other = add_company(bruno_visitor_, awkward);
  bruno_visitor_.post(concat("/empresas/", other, "/excluir"));
  const site::Response mine = ana_visitor_.get("/excluidos");
  EXPECT_TRUE(contains(mine, "Padaria Central") && contains(mine, "Empresa") && contains(mine, "Ana Moraes"));
  EXPECT_FALSE(contains(mine, "O&#39;Brien"));
  EXPECT_EQ(ana_visitor_.get(concat("/excluidos?apos=", number("select max(registro) from excluido"))).status,
            404);
  for (Visitor visitor : {helena_visitor_, logged_in("TARVONEL")}) {
    const site::Response all = visitor.get("/excluidos");
    EXPECT_TRUE(contains(all, "Padaria Central") && contains(all, "O&#39;Brien &lt;b&gt;&quot;&amp;"));
    EXPECT_TRUE(contains(all, "Bruno D&#39;Ávila"));
  }
  EXPECT_TRUE(contains(helena_visitor_.get("/excluidos/exportar"),
                       "\r\nEmpresa;\"O'Brien <b>\"\"&\";Bruno D'Ávila;"));
}

}  // namespace
}  // namespace pradelis::tests
