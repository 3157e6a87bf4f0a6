#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

class Activities : public ComponentTest {
 protected:
  Variant log(const Variant& next = "12/03/2026 09:30", const Variant& kind = std::int32_t{42},
              const Variant& by = "602") {
    return crm_->Cadastrar_Atividade(501, 0, 41, 601, 701, "05/03/2026 14:07:33", "ligou d'outra linha", next,
                                     kind, created_, "Ligação", by);
  }
  std::string planning() {
    return rows(
        "select proximocontato, rproximaatividade, rproximovendedor from crm_atividade order by oid "
        "desc");
  }

  const Date created_ = make_date({.year = 2026, .month = 3, .day = 4, .hour = 8});
};

TEST_F(Activities, ALoggedActivityCarriesThePlanForTheNext) {
  StatementRecorder recorder;
  const auto base = double_base();
  EXPECT_EQ(log(), Variant(std::int16_t{0}));
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{"table: crm_atividade"}));
  EXPECT_EQ(base->calls,
            (std::vector<std::string>{"IncluirItem(601,Ligação,16202,7,7,04/03/2026 08:00:00,-,601,,,0)"}));
  EXPECT_EQ(rows("select i.nome, i.criadoem, a.rpessoa, a.rnegociopossivel, a.ratividade, a.rvendedor, "
                 "a.rcontato, a.data, a.observacao from item i, crm_atividade a where i.oid = a.oid"),
            "Ligação|04/03/2026 08:00:00|501|0|41|601|701|05/03/2026 14:07:33|ligou d'outra linha");
  EXPECT_EQ(planning(), "12/03/2026 09:30:00|42|602");
  EXPECT_EQ(crm_->rs, nullptr);
}

TEST_F(Activities, PlanningValuesThatAreNotGivenAreNull) {
  for (const Variant& none : {Variant(), Variant::null()}) {
    log(none, none, none);
    EXPECT_EQ(planning(), "null|null|null");
    run("delete from crm_atividade");
  }
}

TEST_F(Activities, AChangeKeepsThePerformerAndTheItem) {
  log();
  const std::int32_t oid = number("select oid from crm_atividade");
  StatementRecorder recorder;
  EXPECT_EQ(crm_->Alterar_Atividade(502, 9, 699, 702, "06/03/2026", Variant(), oid, "visita", 43,
                                    Variant::null(), Variant()),
            Variant(std::int16_t{0}));
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{"updatable: SELECT * FROM crm_atividade WHERE OID =" + to_text(oid)}));
  EXPECT_EQ(rows("select rpessoa, rnegociopossivel, ratividade, rvendedor, rcontato, data, observacao from "
                 "crm_atividade"),
            "502|9|43|601|702|06/03/2026|visita");
  EXPECT_EQ(planning(), "null|null|null");
  EXPECT_EQ(rows("select nome, atualizadopor from item where oid = " + to_text(oid)), "Ligação|null");
  EXPECT_EQ(crm_->rs, nullptr);
}

TEST_F(Activities, FailuresLeaveTheItemAndNameTheMethod) {
  const Failure bad_date = failure_of([&] { log("semana que vem"); });
  EXPECT_EQ(bad_date.number, error_number::value_does_not_fit);
  EXPECT_EQ(bad_date.source, "Pradelis.CRM.Cadastrar_Atividade");
  EXPECT_EQ(rows("select count(*) from item where nome = 'Ligação'"), "1");
  EXPECT_EQ(rows("select count(*) from crm_atividade"), "0");

  const Failure unknown = failure_of([&] {
    crm_->Alterar_Atividade(501, 0, 601, 701, "06/03/2026", Variant(), 99, "", 41, Variant(), Variant());
  });
  EXPECT_EQ(unknown.number, error_number::no_current_row);
  EXPECT_EQ(unknown.source, "Pradelis.CRM.Alterar_Atividade");
}

}  // namespace
}  // namespace pradelis::tests
