#include "site/format.h"
#include "tests/site/visitor.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

/// While it lives, today is so many days away.
class Days {
 public:
  explicit Days(int from_today) {
    const Date then{now().serial + from_today};
    replace_clock([then] { return then; });
  }
  ~Days() { replace_clock({}); }
  Days(const Days&) = delete;
  Days& operator=(const Days&) = delete;
};

std::string day(int from_today) { return site::iso_day({today().serial + from_today}); }

class Activities : public SiteTest {
 protected:
  Activities() {
    company_ = add_company(ana_, "Padaria Central");
    deal_ = add_deal(ana_, company_, "Reforma");
    page_ = concat("/empresas/", company_);
  }

  Visitor ana_ = logged_in("ana");
  std::int32_t company_ = 0, deal_ = 0;
  std::string page_;
};

TEST_F(Activities, AreShownAsTypedAndChanged) {
  const char* typed = "O'Brien <b>\"& aceitou";
  const std::int32_t contact = add_contact(ana_, company_, "Rita Nunes");
  const std::int32_t activity =
      add_activity(ana_, company_, deal_, typed,
                   {{"contato", to_text(contact)}, {"proximo", day(3)}, {"proxima", to_text(kind_)}});
  const std::string row =
      "select rpessoa, rnegociopossivel, rvendedor, rcontato, rproximovendedor from "
      "crm_atividade where oid = " +
      to_text(activity);
  EXPECT_EQ(database_.rows(row),
            concat(company_, "|", deal_, "|", ana_.person, "|", contact, "|", ana_.person));
  for (const std::string& target : {page_, concat("/negocios/", deal_)}) {
    const site::Response page = ana_.get(target);
    EXPECT_TRUE(contains(page, "O&#39;Brien &lt;b&gt;&quot;&amp; aceitou")) << page.body;
    EXPECT_TRUE(contains(page, "Rita Nunes") && contains(page, "(em 3 dias)"));
  }
  const std::string change = concat("/atividades/", activity, "/alterar");
  const site::Response form = ana_.get(change);
  EXPECT_TRUE(contains(form, "O&#39;Brien &lt;b&gt;&quot;&amp; aceitou"));
  EXPECT_TRUE(contains(form, "value=\"" + day(3) + "\""));
  Visitor helena = logged_in("helena");
  EXPECT_EQ(
      helena.post(change, {{"atividade", to_text(kind_)}, {"data", day(0)}, {"observacao", "Outra"}}).status,
      303);
  // Who performed it stays, and an empty plan is none.
  EXPECT_EQ(database_.rows(row), concat(company_, "|0|", ana_.person, "|0|null"));
  EXPECT_EQ(
      number("select count(*) from crm_atividade where proximocontato is null and rproximaatividade is null"),
      1);
}

TEST_F(Activities, AreRefusedWithTheirReason) {
  const std::int32_t other = add_deal(ana_, add_company(ana_, "Outra"), "Alheio");
  struct Case {
    const char* field;
    std::string value;
    const char* reason;
  };
  const std::int32_t before = version();
  for (const Case& c :
       std::initializer_list<Case>{{"data", day(1), "A data ainda não chegou."},
                                   {"proximo", day(-1), "Fica antes da atividade."},
                                   {"proxima", to_text(kind_), "Diga quando."},
                                   {"atividade", "", "Escolha uma opção."},
                                   {"negocio", to_text(other), "Escolha uma das opções oferecidas."},
                                   {"responsavel", to_text(bruno_), "Escolha uma das opções oferecidas."}}) {
    Fields fields = {{c.field, c.value}};
    for (const auto& [name, value] :
         Fields{{"atividade", to_text(kind_)}, {"data", day(0)}, {"observacao", "nota"}}) {
      if (name != c.field) fields.emplace_back(name, value);
    }
    const site::Response response = ana_.post(page_ + "/atividades/nova", fields);
    EXPECT_EQ(response.status, 422) << c.field;
    EXPECT_TRUE(contains(response, c.reason) && contains(response, "nota")) << c.field;
  }
  EXPECT_EQ(version(), before);
}

TEST_F(Activities, FillTheAgendaUntilTheNextOneIsLogged) {
  add_activity(ana_, company_, deal_, "Mandar proposta", {{"proximo", day(2)}});
  add_activity(ana_, company_, 0, "Almoço", {{"proximo", day(0)}});
  site::Response agenda = ana_.get("/agenda");
  EXPECT_TRUE(contains(agenda, "em 2 dias") && contains(agenda, ">Hoje<"));
  EXPECT_FALSE(contains(agenda, "Atrasado"));
  EXPECT_LT(agenda.body.find("Almoço"), agenda.body.find("Mandar proposta"));
  Visitor helena = logged_in("helena");
  EXPECT_TRUE(contains(helena.get("/agenda"), "Mandar proposta"));
  EXPECT_TRUE(contains(helena.get("/agenda?vendedor=" + to_text(ana_.person)), "Mandar proposta"));
  EXPECT_FALSE(contains(helena.get("/agenda?vendedor=" + to_text(helena_)), "Mandar proposta"));
  EXPECT_FALSE(contains(logged_in("bruno").get("/agenda"), "Padaria Central"));
  EXPECT_FALSE(contains(ana_.get("/agenda?ver=sem-plano"), "Reforma"));
  {
    const Days later(3);
    agenda = ana_.get("/agenda");
    EXPECT_TRUE(contains(agenda, "Atrasado") && contains(agenda, "2 atrasados"));
  }
  add_activity(ana_, company_, deal_, "Proposta mandada");
  agenda = ana_.get("/agenda");
  EXPECT_FALSE(contains(agenda, "Mandar proposta"));
  EXPECT_TRUE(contains(agenda, "Almoço"));
  EXPECT_TRUE(contains(ana_.get("/agenda?ver=sem-plano"), "Reforma"));
}

TEST_F(Activities, ShowWhereNothingHappensForLong) {
  const std::int32_t moved = add_deal(ana_, company_, "Vitrine");
  {
    const Days later(20);
    add_activity(ana_, company_, moved, "Visita");
    EXPECT_FALSE(contains(ana_.get("/agenda?ver=parados"), "Reforma"));
  }
  const Days much_later(40);
  const site::Response agenda = ana_.get("/agenda?ver=parados");
  EXPECT_TRUE(contains(agenda, "Reforma") && contains(agenda, "há 40 dias") && contains(agenda, "1 negócio"));
  EXPECT_FALSE(contains(agenda, "Vitrine"));
  ana_.post(concat("/negocios/", deal_, "/perder"), {{"data", day(0)}, {"motivo", to_text(reason_)}});
  EXPECT_FALSE(contains(ana_.get("/agenda?ver=parados"), "Reforma"));
}

TEST_F(Activities, FillPagesOfTheAgenda) {
  for (int i = 0; i < 30; ++i) {
    add_activity(ana_, add_company(ana_, concat("Loja ", i)), 0, concat("nota ", i, "."),
                 {{"proximo", day(i)}});
  }
  const site::Response first = ana_.get("/agenda");
  EXPECT_TRUE(contains(first, "nota 24.") && !contains(first, "nota 25."));
  const std::size_t next = first.body.find("href=\"", first.body.find("class=\"pager\"")) + 6;
  std::string address = first.body.substr(next, first.body.find('"', next) - next);
  address = replace_all(replace_all(address, "&amp;", "&"), "&#x2F;", "/");
  const site::Response second = ana_.get(address);
  EXPECT_TRUE(contains(second, "nota 25.") && contains(second, "nota 29.") && !contains(second, "nota 24."));
}

}  // namespace
}  // namespace pradelis::tests
