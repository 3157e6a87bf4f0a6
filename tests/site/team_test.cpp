#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

class Team : public SiteTest {
 protected:
  std::int32_t parent_of(std::int32_t oid) {
    return number(concat("select rescopo from item where oid = ", oid));
  }
  std::string place(std::int32_t group) { return concat("/equipe/grupos/", group); }
  std::string person(std::int32_t oid) { return concat("/equipe/vendedores/", oid); }

  Visitor helena_visitor_ = logged_in("helena"), keeper_ = logged_in("TARVONEL");
};

TEST_F(Team, MovesGroupsButNotBelowThemselves) {
  EXPECT_EQ(
      helena_visitor_.post(place(west_) + "/alterar", {{"nome", "Oeste"}, {"pai", to_text(east_)}}).status,
      303);
  EXPECT_EQ(parent_of(west_), east_);
  Visitor ana = logged_in("ana");
  const std::int32_t company = add_company(ana, "Padaria");
  // Ana leads Bruno now, and Bruno sees nothing of hers.
  Visitor bruno = logged_in("bruno");
  EXPECT_EQ(ana.get(concat("/empresas/", add_company(bruno, "De Bruno"))).status, 200);
  EXPECT_EQ(bruno.get(concat("/empresas/", company)).status, 404);
  for (const std::int32_t parent : {west_, east_}) {
    EXPECT_EQ(keeper_.post(place(east_) + "/alterar", {{"nome", "Leste"}, {"pai", to_text(parent)}}).status,
              422);
  }
  EXPECT_EQ(helena_visitor_.post(place(east_) + "/alterar", {{"nome", "Leste"}}).status, 422);
  EXPECT_EQ(parent_of(east_), top_);
  EXPECT_EQ(keeper_.post(place(east_) + "/alterar", {{"nome", "Leste"}}).status, 303);
  EXPECT_EQ(parent_of(east_), 7);
  EXPECT_EQ(helena_visitor_.get(concat("/empresas/", company)).status, 404);
}

TEST_F(Team, DeletesAGroupWithWhatIsBelowItAndKeepsItsPeople) {
  helena_visitor_.post("/equipe/grupos/novo", {{"nome", "<b>Interior"}, {"pai", to_text(west_)}});
  const site::Response ask = helena_visitor_.get(place(west_) + "/excluir");
  EXPECT_TRUE(contains(ask, "Abaixo dele: &lt;b&gt;Interior") &&
              contains(ask, "Vendedor: Bruno D&#39;Ávila"));
  EXPECT_EQ(helena_visitor_.post(place(west_) + "/excluir").status, 422);
  EXPECT_EQ(helena_visitor_.post(place(west_) + "/excluir", {{"destino", to_text(west_)}}).status, 422);
  EXPECT_EQ(number("select count(*) from excluido"), 0);
  database_.run(concat("insert into agrupamento (oid, ritem, rgrupo, rpapel) values (90001, ", bruno_, ", ",
                       top_, ", 26735)"));
  EXPECT_EQ(helena_visitor_.post(place(west_) + "/excluir", {{"destino", to_text(east_)}}).status, 303);
  EXPECT_EQ(database_.rows("select nome, excluidopor from excluido order by registro"),
            concat("<b>Interior|", helena_, "\nOeste|", helena_));
  EXPECT_EQ(database_.rows(concat("select rgrupo from agrupamento where rpapel = 26735 and ritem = ", bruno_,
                                  " order by oid")),
            concat(top_, "\n", east_))
      << "he stays in his other group";
  const site::Response team = helena_visitor_.get("/equipe");
  EXPECT_TRUE(contains(team, "Bruno") && !contains(team, "Oeste"));
  EXPECT_EQ(logged_in("ana").get(place(east_) + "/excluir").status, 404);
}

TEST_F(Team, ShowsSalespeopleInTheComponentsTree) {
  const char* awkward = "O'Brien <b>\"&";
  const char* in_attribute = "O&#39;Brien &amp;lt;b&amp;gt;&amp;quot;&amp;amp;<br>";
  EXPECT_EQ(helena_visitor_
                .post(person(ana_) + "/alterar",
                      {{"nome", awkward}, {"grupo", to_text(west_)}, {"superior", to_text(helena_)}})
                .status,
            303);
  EXPECT_EQ(parent_of(ana_), helena_);
  EXPECT_EQ(number(concat("select rgrupo from agrupamento where rpapel = 26735 and ritem = ", ana_)), west_);
  const site::Response tree = helena_visitor_.get("/equipe/vendedores");
  EXPECT_TRUE(contains(tree, replace_all(replace_all(in_attribute, "<", "&lt;"), ">", "&gt;"))) << tree.body;
  EXPECT_TRUE(contains(tree, concat("href=\"&#x2F;equipe&#x2F;vendedores&#x2F;", bruno_))) << tree.body;
  EXPECT_EQ(header(helena_visitor_.get(concat("/equipe/vendedores?vendedor=", ana_)), "Location"),
            person(ana_));
  EXPECT_TRUE(contains(helena_visitor_.get(concat("/equipe/vendedores?vendedor=", helena_)),
                       "Escolha um vendedor dos grupos que você administra"));
  for (const std::string& target : {person(ana_), std::string("/equipe"), std::string("/empresas/nova")}) {
    EXPECT_TRUE(contains(helena_visitor_.get(target), "O&#39;Brien &lt;b&gt;&quot;&amp;")) << target;
  }
  Visitor ana = logged_in("ana");
  EXPECT_TRUE(contains(ana.get("/"), "O&#39;Brien"));
  EXPECT_FALSE(contains(ana.get("/"), "&amp;lt;"));
  const std::int32_t company = add_company(ana, "Padaria");
  EXPECT_TRUE(contains(ana.get("/empresas"), "O&#39;Brien &lt;b&gt;&quot;&amp;"));
  EXPECT_TRUE(contains(ana.get("/empresas/exportar"), "\"O'Brien <b>\"\"&\""));
  EXPECT_TRUE(contains(ana.get(concat("/empresas/", company)), "O&#39;Brien &lt;b&gt;&quot;&amp;"));
  // Nobody stands below himself.
  EXPECT_EQ(keeper_
                .post(person(helena_) + "/alterar",
                      {{"nome", "Helena"}, {"grupo", to_text(top_)}, {"superior", to_text(ana_)}})
                .status,
            422);
  EXPECT_EQ(helena_visitor_.get(person(helena_)).status, 404);
  EXPECT_EQ(ana.get(person(bruno_)).status, 404);
  EXPECT_EQ(ana.get("/equipe/vendedores").status, 404);
}

TEST_F(Team, HandsRecordsOverAndDeletesWhoHasNone) {
  Visitor ana = logged_in("ana");
  const std::int32_t company = add_company(ana, "Padaria");
  const std::int32_t open = add_deal(ana, company, "Aberto"), ended = add_deal(ana, company, "Ganho");
  ana.post(concat("/negocios/", ended, "/fechar"), {{"data", "2020-01-02"}, {"valor", "1"}});
  EXPECT_EQ(helena_visitor_.post(person(ana_) + "/excluir").status, 422);
  const site::Response form = helena_visitor_.get(person(ana_) + "/passar");
  for (const char* text :
       {"Empresas (1)", "Negócios em aberto (1)", "Negócios encerrados (1)", "Bruno D&#39;Ávila"}) {
    EXPECT_TRUE(contains(form, text)) << text;
  }
  for (const Fields& fields :
       {Fields{{"oque", "1"}, {"vendedor", to_text(ana_)}}, Fields{{"oque", "1"}, {"vendedor", "7"}},
        Fields{{"vendedor", to_text(helena_)}}, Fields{{"oque", "4"}, {"vendedor", to_text(helena_)}}}) {
    EXPECT_EQ(helena_visitor_.post(person(ana_) + "/passar", fields).status, 422);
  }
  EXPECT_EQ(
      helena_visitor_
          .post(person(ana_) + "/passar",
                {{"oque", "1"}, {"oque", "2"}, {"vendedor", to_text(helena_)}, {"fora", to_text(bruno_)}})
          .status,
      303);
  EXPECT_EQ(number(concat("select criadopor from item where oid = ", company)), bruno_);
  EXPECT_EQ(database_.rows(concat("select rvendedor from crm_pos_negocio where oid in (", open, ", ", ended,
                                  ") order by oid")),
            concat(bruno_, "\n", ana_));
  EXPECT_EQ(helena_visitor_.post(person(bruno_) + "/passar", {{"oque", "1"}, {"vendedor", to_text(helena_)}})
                .status,
            303);
  EXPECT_EQ(number(concat("select criadopor from item where oid = ", company)), helena_);

  EXPECT_EQ(helena_visitor_.post(person(ana_) + "/excluir").status, 303);
  EXPECT_EQ(header(ana.get("/"), "Location"), "/entrar");
  EXPECT_EQ(Visitor(site_).log_in("ana", password).status, 422);
  EXPECT_FALSE(contains(helena_visitor_.get("/empresas/nova"), "Ana Moraes"));
  EXPECT_EQ(helena_visitor_.get(person(ana_)).status, 404);
}

}  // namespace
}  // namespace pradelis::tests
