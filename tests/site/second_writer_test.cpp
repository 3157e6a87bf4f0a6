#include <atomic>
#include <thread>

#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

/// A form that two people have open, what each of them types, and what is stored of it.
struct Edited {
  std::string address;
  Fields first, second;
  std::string typed;   ///< of the second one's, as the page shows it
  std::string stored;  ///< of the first one's, as the page shows it
  std::string sql;     ///< one value that both change
};

class SecondWriter : public SiteTest {
 protected:
  SecondWriter() {
    company_ = add_company(ana_visitor_, "Padaria Central");
    contact_ = add_contact(ana_visitor_, company_, "Rita");
    deal_ = add_deal(ana_visitor_, company_, "Reforma");
    activity_ = add_activity(ana_visitor_, company_, deal_, "Visita");
    first_.post("/produtos/novo", {{"nome", "Balcão"}});
    keeper_.post("/campos/novo", {{"rotulo", "Ramo"}, {"tipo", "1"}});
    field_ = number("select max(oid) from dadoadicional");
    keeper_.post("/categorias/nova", {{"nome", "Comércio"}});
    category_ = number("select max(oid) from categoria");
  }

  static std::string name_of(std::int32_t oid) { return concat("select nome from item where oid = ", oid); }

  std::vector<Edited> forms() const {
    const Fields company = {{"razao", "Central Ltda."}, {"cidade", "Campinas"}};
    const auto with = [](Fields fields, const char* name, const char* value) {
      fields.emplace_back(name, value);
      return fields;
    };
    const Fields activity = {
        {"atividade", to_text(kind_)}, {"data", "2026-01-05"}, {"responsavel", to_text(ana_)}};
    const Fields city = {{"estado", "2325"}};
    const Fields person = {{"grupo", to_text(east_)}};
    const std::string mine = "Meu <b>\"&", shown = "Meu &lt;b&gt;&quot;&amp;";
    const auto named = [&](std::string address, Fields rest, std::int32_t oid) {
      return Edited{
          std::move(address), with(rest, "nome", "Dele"), with(rest, "nome", mine.c_str()), shown, "Dele",
          name_of(oid)};
    };
    return {
        named(concat("/empresas/", company_, "/alterar"), company, company_),
        named(concat("/empresas/", company_, "/contatos/", contact_, "/alterar"), {{"cargo", to_text(role_)}},
              contact_),
        {concat("/negocios/", deal_, "/alterar"),
         {{"valor", "7,00"}, {"classes", to_text(class_)}, {"observacao", "Dele"}},
         {{"valor", "1500"}, {"data", "2027-03-05"}, {"observacao", mine}},
         shown,
         "7,00",
         concat("select observacao from item where oid = ", deal_)},
        {concat("/atividades/", activity_, "/alterar"), with(activity, "observacao", "Dele"),
         with(activity, "observacao", mine.c_str()), shown, "Dele",
         concat("select observacao from crm_atividade where oid = ", activity_)},
        {"/produtos/1/alterar",
         {{"nome", "Dele"}},
         {{"nome", mine}},
         shown,
         "Dele",
         "select nome from crm_produtos where oid = 1"},
        named(concat("/cidades/", city_, "/alterar"), city, city_),
        named(concat("/equipe/grupos/", east_, "/alterar"), {{"pai", to_text(top_)}}, east_),
        named(concat("/equipe/vendedores/", bruno_, "/alterar"), person, bruno_),
        named(concat("/categorias/", category_, "/alterar"), {}, category_),
        {concat("/campos/", field_, "/alterar"),
         {{"rotulo", "Dele"}},
         {{"rotulo", mine}},
         shown,
         "Dele",
         concat("select valor from dadoadicional where oid = ", field_)},
    };
  }

  Visitor ana_visitor_ = logged_in("ana");
  Visitor first_ = logged_in("helena"), second_ = logged_in("helena");
  Visitor keeper_ = logged_in("TARVONEL"), second_keeper_ = logged_in("TARVONEL");
  std::int32_t company_ = 0, contact_ = 0, deal_ = 0, activity_ = 0, field_ = 0, category_ = 0;
  std::int32_t city_ = number("select max(oid) from cidade");
};

TEST_F(SecondWriter, IsToldAndLosesNothing) {
  for (const Edited& form : forms()) {
    const bool kept = form.address.starts_with("/ca");
    Visitor& writer = kept ? keeper_ : first_;
    Visitor& second = kept ? second_keeper_ : second_;
    ASSERT_EQ(second.get(form.address).status, 200) << form.address;
    const site::Response first = writer.post(form.address, form.first);
    ASSERT_EQ(first.status, 303) << form.address << first.body;
    const std::string stored = to_text(database_.value(form.sql));

    const site::Response told = second.post(form.address, form.second);
    EXPECT_EQ(told.status, 422) << form.address;
    EXPECT_TRUE(contains(told, "Outra pessoa mudou este registro enquanto você escrevia.")) << form.address;
    EXPECT_TRUE(contains(told, form.typed)) << form.address << told.body;
    EXPECT_TRUE(contains(told, "Está gravado: <b>" + form.stored + "</b>")) << form.address << told.body;
    EXPECT_EQ(to_text(database_.value(form.sql)), stored) << form.address;

    EXPECT_EQ(second.post(form.address, form.second).status, 303) << form.address;
    EXPECT_NE(to_text(database_.value(form.sql)), stored) << form.address;
  }
}

TEST_F(SecondWriter, IsOneOfTheTwoHoweverCloseTheyAre) {
  const std::string page = concat("/empresas/", company_, "/alterar");
  for (int round = 0; round < 10; ++round) {
    std::atomic<int> stored = 0, told = 0;
    std::vector<std::thread> writers;
    for (Visitor* visitor : {&first_, &second_}) visitor->get(page);
    for (Visitor* visitor : {&first_, &second_}) {
      writers.emplace_back([&, visitor] {
        const std::string name = concat("Padaria ", round, visitor == &first_ ? " A" : " B");
        const int status =
            visitor->post(page, {{"nome", name}, {"razao", "Central"}, {"cidade", "Campinas"}}).status;
        ++(status == 303 ? stored : told);
      });
    }
    for (std::thread& writer : writers) writer.join();
    EXPECT_EQ(stored, 1);
    EXPECT_EQ(told, 1);
  }
}

TEST_F(SecondWriter, HearsOfFieldsThatDifferOnly) {
  const std::string page = concat("/negocios/", deal_, "/alterar");
  second_.get(page);
  first_.post(page, {{"valor", "1.500,00"}, {"classes", to_text(class_)}});
  const site::Response told = second_.post(page, {{"valor", "1500"}, {"data", "05/03/2027"}});
  EXPECT_EQ(told.status, 422);
  EXPECT_TRUE(contains(told, "Está gravado: <b>Software</b>")) << told.body;
  EXPECT_TRUE(contains(told, "Está gravado: (em branco)<b></b>"));
  EXPECT_FALSE(contains(told, "Está gravado: <b>1.500,00</b>"));
}

TEST_F(SecondWriter, KeepsWhatHeWroteOfARecordThatIsGone) {
  const std::string page = concat("/negocios/", deal_);
  second_.get(page + "/alterar");
  EXPECT_EQ(first_.post(page + "/excluir").status, 303);
  const site::Response gone =
      second_.post(page + "/alterar", {{"valor", "1500"}, {"observacao", "Muito & longo"}});
  EXPECT_EQ(gone.status, 404);
  EXPECT_TRUE(contains(gone, "O que você escreveu") && contains(gone, "Muito &amp; longo"));
  EXPECT_FALSE(contains(second_.get(page), "O que você escreveu"));
}

TEST_F(SecondWriter, DoesNotPassOnWhatWasPassedOn) {
  Visitor helena = logged_in("helena");
  for (const std::string& page :
       {concat("/empresas/", company_, "/passar"), concat("/negocios/", deal_, "/passar")}) {
    helena.get(page);
    EXPECT_EQ(first_.post(page, {{"vendedor", to_text(bruno_)}}).status, 303);
    EXPECT_EQ(helena.post(page, {{"vendedor", to_text(helena_)}}).status, 422) << page;
  }
  EXPECT_EQ(number(concat("select rvendedor from crm_pos_negocio where oid = ", deal_)), bruno_);
}

}  // namespace
}  // namespace pradelis::tests
