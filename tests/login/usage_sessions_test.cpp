#include "component/thread_state.h"
#include "tests/support/component_test.h"
#include "tests/support/recording.h"
#include "values/clock.h"

namespace pradelis::tests {
namespace {

class UsageSessions : public ComponentTest {
 protected:
  UsageSessions() {
    replace_clock([] { return make_date({.year = 2026, .month = 3, .day = 5, .hour = 14}); });
  }
  ~UsageSessions() override { replace_clock({}); }

  void other_application_opens(std::int32_t usage, std::int32_t application = 20091,
                               const std::string& station = "caixa 1") {
    run(concat("insert into sessaodeuso (oid, situacao) values (", usage, ", 1)"));
    add_application_session(usage, application, station);
  }
  void add_application_session(std::int32_t usage, std::int32_t application, const std::string& station) {
    run(concat("insert into sessaoaplicativo (oid, rsessaodeuso, raplicativo, estacao) values (", ++last_row_,
               ", ", usage, ", ", application, ", '", station, "')"));
  }
};

TEST_F(UsageSessions, AFreshWorkstationGetsAUsageAndAnApplicationSession) {
  component::thread_state().last_message = "antes";
  StatementRecorder recorder;
  const std::int32_t session = crm_->Iniciar_Sessao_Uso(26737, "caixa 1");
  EXPECT_EQ(
      recorder.take(),
      (std::vector<std::string>{
          "forward: SELECT SU.OID FROM SESSAODEUSO SU, SESSAOAPLICATIVO SA WHERE SU.OID = SA.RSESSAODEUSO "
          "AND SU.OID > 7 AND SU.SITUACAO = 1 AND SU.TERMINO IS NULL AND SA.ESTACAO = 'caixa 1' AND "
          "SA.RAPLICATIVO != 20090 AND SU.OID NOT IN (SELECT RSESSAODEUSO FROM SESSAOAPLICATIVO A WHERE "
          "A.ESTACAO = 'caixa 1' AND A.RAPLICATIVO = 20090 AND A.TERMINO IS NULL)",
          "table: sessaodeuso",
          "table: sessaoaplicativo",
      }));
  EXPECT_EQ(component::thread_state().last_message, "");
  EXPECT_EQ(rows("select a.oid, u.situacao, u.inicio, u.termino, a.raplicativo, a.rusuario, a.estacao, "
                 "a.inicio, a.termino from sessaodeuso u, sessaoaplicativo a where u.oid = a.rsessaodeuso"),
            to_text(session) + "|1|05/03/2026 14:00:00|null|20090|26737|caixa 1|05/03/2026 14:00:00|null");
}

TEST_F(UsageSessions, AnotherApplicationsOpenSessionIsJoinedWithoutWriting) {
  other_application_opens(7);
  other_application_opens(500, 20091, "caixa 2");
  other_application_opens(501);
  EXPECT_EQ(crm_->Iniciar_Sessao_Uso(26737, "caixa 1"), 501);
  EXPECT_EQ(rows("select count(*) from sessaoaplicativo"), "3");

  add_application_session(501, 20090, "caixa 1");
  EXPECT_GT(crm_->Iniciar_Sessao_Uso(26737, "caixa 1"), 100000) << "joined already";
  EXPECT_EQ(rows("select count(*) from sessaodeuso"), "4");
}

TEST_F(UsageSessions, EndingEndsBothSessionsOnce) {
  component::thread_state().last_message = "antes";
  const std::int32_t session = crm_->Iniciar_Sessao_Uso(26737, "caixa 1");
  StatementRecorder recorder;
  EXPECT_TRUE(crm_->Finalizar_Sessao_Uso(session));
  const std::string usage = rows("select oid from sessaodeuso");
  EXPECT_EQ(
      recorder.take(),
      (std::vector<std::string>{
          "updatable: SELECT * FROM sessaoaplicativo WHERE TERMINO IS NULL AND OID = " + to_text(session),
          "updatable: SELECT * FROM sessaodeuso WHERE oid = " + usage + " AND TERMINO IS NULL",
      }));
  EXPECT_EQ(rows("select situacao, termino from sessaodeuso"), "2|05/03/2026 14:00:00");
  EXPECT_EQ(rows("select termino from sessaoaplicativo"), "05/03/2026 14:00:00");

  const Failure twice = failure_of([&] { crm_->Finalizar_Sessao_Uso(session); });
  EXPECT_EQ(twice.number, error_number::no_current_row);
  EXPECT_EQ(twice.source, "Pradelis.CRM.Finalizar_Sessao_Uso");
}

TEST_F(UsageSessions, TheReasonIsStoredAndAnEndedUsageSessionFails) {
  const std::int32_t session = crm_->Iniciar_Sessao_Uso(26737, "caixa 1");
  EXPECT_TRUE(crm_->Finalizar_Sessao_Uso(session, 5));
  EXPECT_EQ(rows("select situacao from sessaodeuso"), "5");

  const std::int32_t other = crm_->Iniciar_Sessao_Uso(26737, "caixa 1");
  run("update sessaodeuso set termino = inicio");
  EXPECT_EQ(failure_of([&] { crm_->Finalizar_Sessao_Uso(other); }).number, error_number::no_current_row);
}

TEST_F(UsageSessions, TheCurrentCompanyIsTheScopeOfTheConfiguredItem) {
  add_item(888, "configurada", 777);
  run("update utilizacao set rutilizado = 888 where runidade = 10449");
  StatementRecorder recorder;
  EXPECT_EQ(crm_->OidEmpresaCorrente(), 777);
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{
                                 "forward: SELECT ITEM.RESCOPO FROM UTILIZACAO_R,ITEM WHERE RUTILIZADO = "
                                 "ITEM.OID AND RITEM = 1 AND RUNIDADE = 10449"}));
  run("delete from utilizacao");
  const Failure failure = failure_of([&] { crm_->OidEmpresaCorrente(); });
  EXPECT_EQ(failure.number, error_number::no_current_row);
  EXPECT_EQ(failure.source, "Pradelis.CRM.OidEmpresaCorrente");
}

}  // namespace
}  // namespace pradelis::tests
