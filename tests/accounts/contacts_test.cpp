#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

class Contacts : public ComponentTest {
 protected:
  std::string register_contact(const std::string& name = "Rita d'Ávila") {
    return crm_->Cadastrar_Contato(601, name, 31, 501);
  }
};

TEST_F(Contacts, RegistrationTiesThePersonToTheCompany) {
  StatementRecorder recorder;
  const auto base = double_base();
  const std::string oid = register_contact();
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{"table: pessoa",
                                      "execute: insert into pessoafisica (oid) values(" + oid + ")"}));
  EXPECT_EQ(base->calls, (std::vector<std::string>{"IncluirItem(1,Rita d'Ávila,45,7,7,-,-,601,,,0)"}));
  EXPECT_EQ(rows("select nome, cid, criadopor from item where oid = " + oid), "Rita d'Ávila|45|1");
  EXPECT_EQ(rows("select razaosocial from pessoa where oid = " + oid), "");
  EXPECT_EQ(rows("select count(*) from pessoafisica where oid = " + oid), "1");
  EXPECT_EQ(rows("select rcategoria from classificacao where ritem = " + oid), "1000");
  EXPECT_EQ(rows("select rgrupo, rpapel from agrupamento where ritem = " + oid), "501|31");
  EXPECT_EQ(crm_->rs, nullptr);

  EXPECT_NE(register_contact(), oid) << "two contacts may have one name";
}

TEST_F(Contacts, ARefusalOfTheLibraryIsRaisedAndKeepsWhatWasWritten) {
  const auto base = double_base();
  base->groups = [](std::int32_t, std::int32_t) { return false; };
  Failure failure = failure_of([&] { register_contact("sem grupo"); });
  EXPECT_EQ(failure.number, 1001);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Cadastrar_Contato");
  EXPECT_EQ(failure.description, "Falha ao cadastrar o agrupamento do contato");
  EXPECT_EQ(rows("select count(*) from classificacao where rcategoria = 1000"), "1");

  base->classifies = [](std::int32_t, std::int32_t) { return false; };
  failure = failure_of([&] { register_contact("sem classe"); });
  EXPECT_EQ(failure.number, 1001);
  EXPECT_EQ(failure.description, "Falha ao cadastrar a classificação do contato");
  EXPECT_EQ(rows("select count(*) from pessoafisica p, item i where p.oid = i.oid and i.nome = 'sem classe'"),
            "1");
}

TEST_F(Contacts, ChangeSetsNameAndRole) {
  const std::string oid = register_contact();
  StatementRecorder recorder;
  EXPECT_EQ(crm_->Alterar_Contato(oid, "602", "Rita Lima", std::int32_t{32}, "501"), "0");
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{"updatable: select * from agrupamento where ritem = " +
                                                       oid + "  and rgrupo= 501"}));
  EXPECT_EQ(rows("select nome, atualizadopor from item where oid = " + oid), "Rita Lima|602");
  EXPECT_EQ(rows("select rgrupo, rpapel from agrupamento where ritem = " + oid), "501|32");
  EXPECT_EQ(crm_->rs, nullptr);
}

TEST_F(Contacts, ChangeAtAnotherCompanyFailsAfterTheName) {
  const std::string oid = register_contact();
  const Failure failure = failure_of([&] {
    crm_->Alterar_Contato(oid, std::int32_t{602}, "Rita Lima", std::int32_t{32}, std::int32_t{502});
  });
  EXPECT_EQ(failure.number, error_number::no_current_row);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Alterar_Contato");
  EXPECT_EQ(rows("select nome from item where oid = " + oid), "Rita Lima");
  EXPECT_EQ(rows("select rpapel from agrupamento where ritem = " + oid), "31");
}

}  // namespace
}  // namespace pradelis::tests
