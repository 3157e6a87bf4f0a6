#include "tests/deals/deal_test.h"
#include "tests/support/recording.h"
#include "values/clock.h"

namespace pradelis::tests {
namespace {

class DealStatus : public DealTest {
 protected:
  ~DealStatus() override { replace_clock({}); }
};

TEST_F(DealStatus, FollowsClosingLossAndReversal) {
  const std::int32_t oid = new_deal();
  set_deal(oid, "valorfechamento", 900.0);
  EXPECT_EQ(crm_->Negocio_Status(no_deal), "NEGÓCIO INEXISTENTE");
  EXPECT_EQ(crm_->Negocio_Status(oid), "Aberto");

  EXPECT_EQ(crm_->Fechar_Negocio("01/05/2026", oid), Variant("0"));
  EXPECT_EQ(crm_->Negocio_Status(oid), "Fechado");
  EXPECT_EQ(deal(oid, "fechamento, valorfechamento, rmotivo"), "01/05/2026|900|null");

  EXPECT_EQ(crm_->Perder_Negocio(on_day(2026, 5, 2), 33, "preço do 'outro'", oid), Variant("0"));
  EXPECT_EQ(crm_->Negocio_Status(oid), "Perdido");
  EXPECT_EQ(deal(oid, "fechamento, rmotivo"), "02/05/2026|33");
  EXPECT_EQ(observation(oid), "preço do 'outro'");
  EXPECT_EQ(crm_->rs2, nullptr);

  crm_->Fechar_Negocio("03/05/2026", to_text(oid));
  EXPECT_EQ(crm_->Negocio_Status(oid), "Perdido") << "closing a lost deal only moves its date";

  EXPECT_EQ(crm_->Estornar_Negocio(oid), Variant("0"));
  EXPECT_EQ(crm_->Negocio_Status(oid), "Aberto");
  EXPECT_EQ(deal(oid, "fechamento, valorfechamento, rmotivo"), "null|900|null");
  EXPECT_EQ(observation(oid), "preço do 'outro'");
}

TEST_F(DealStatus, ChangesRunTheseStatements) {
  const std::int32_t oid = new_deal();
  StatementRecorder recorder;
  crm_->Fechar_Negocio("01/05/2026", oid);
  crm_->Perder_Negocio("01/05/2026", 33, "nota", oid);
  crm_->Estornar_Negocio(oid);
  crm_->Negocio_Status(oid);
  crm_->Diadecorrido(oid);
  const std::string deal = to_text(oid);
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{
                "updatable: Select * from crm_pos_negocio where oid = " + deal,
                "updatable: Select * from crm_pos_negocio where oid = " + deal,
                "updatable: Select observacao from item where oid = " + deal,
                "updatable: Select * from crm_pos_negocio where oid = " + deal,
                "static: select Fechamento, rmotivo from crm_pos_negocio where oid=" + deal,
                "static: select Fechamento, ValorFechamento, rmotivo, Criadoem from crm_pos_negocio, item "
                "where item.oid=crm_pos_negocio.oid and item.oid=" +
                    deal,
            }));
}

TEST_F(DealStatus, AnUnknownDealOrBadIdentifierFailsUnderTheMethodsName) {
  const struct {
    std::string method;
    std::function<void(const Variant&)> call;
  } methods[] = {
      {"Fechar_Negocio", [&](const Variant& oid) { crm_->Fechar_Negocio("01/05/2026", oid); }},
      {"Estornar_Negocio", [&](const Variant& oid) { crm_->Estornar_Negocio(oid); }},
      {"Diadecorrido", [&](const Variant& oid) { crm_->Diadecorrido(oid); }},
  };
  for (const auto& [method, call] : methods) {
    const Failure unknown = failure_of([&] { call(no_deal); });
    EXPECT_EQ(unknown.number, error_number::no_current_row) << method;
    EXPECT_EQ(unknown.source, "Pradelis.CRM." + method);
    EXPECT_EQ(failure_of([&] { call("1 2"); }).number, error_number::wrong_statement) << method;
    EXPECT_EQ(failure_of([&] { call(Variant::null()); }).number, error_number::wrong_statement) << method;
    EXPECT_EQ(failure_of([&] { call(Variant::missing()); }).number, error_number::type_mismatch) << method;
  }
  crm_->Executar2("select 1 as n");
  const Failure lost = failure_of([&] { crm_->Perder_Negocio("01/05/2026", 33, "nota", no_deal); });
  EXPECT_EQ(lost.number, error_number::no_current_row);
  EXPECT_EQ(lost.source, "Pradelis.CRM.Perder_Negocio");
  EXPECT_EQ(crm_->rs2, nullptr);
}

TEST_F(DealStatus, TheExpectedClosingIsTheDateOfAnOpenDeal) {
  const Date expected = on_day(2026, 4, 10);
  const Variant closed = on_day(2026, 5, 1);
  EXPECT_EQ(crm_->Fechamento_Previsto(Variant::null(), expected, Variant::null()), Variant("10/04/2026"));
  EXPECT_EQ(crm_->Fechamento_Previsto(Variant::null(), expected, std::int32_t{33}), Variant("10/04/2026"));
  EXPECT_EQ(crm_->Fechamento_Previsto(closed, expected, Variant::null()), Variant("Fechado"));
  EXPECT_EQ(crm_->Fechamento_Previsto(closed, expected, std::int32_t{33}), Variant("Perdido"));
  EXPECT_EQ(crm_->Fechamento_Previsto(Variant(), expected, Variant()), Variant("Perdido"));
}

TEST_F(DealStatus, AgeCountsMidnightsInTheOrderOfItsTests) {
  replace_clock([] { return on_day(2026, 3, 12, 1); });
  const Variant none = Variant::null();
  const Variant created = on_day(2026, 3, 1, 23);
  const Variant closed = on_day(2026, 3, 5, 1);
  const struct {
    Variant created, closing, closing_value, reason;
    std::string age;
  } cases[] = {
      {created, none, none, none, "11 Dias"},
      {on_day(2026, 3, 12), none, none, none, "0 Dias"},
      {on_day(2026, 3, 13), none, none, none, "-1 Dias"},
      {none, none, none, none, " Dias"},
      {created, closed, none, none, "11 Dias"},  // closed by date alone: the age goes on
      {created, closed, 10.0, none, ""},
      {created, closed, none, std::int32_t{33}, ""},
      {created, none, 10.0, none, "Fechado em  Dias"},
      {created, none, 10.0, std::int32_t{33}, "Fechado em  Dias"},
      {created, none, none, std::int32_t{33}, "Perdido em  Dias"},
  };
  const std::int32_t oid = new_deal();
  for (const auto& expected : cases) {
    store("select criadoem from item where oid = " + to_text(oid), expected.created);
    set_deal(oid, "fechamento", expected.closing);
    set_deal(oid, "valorfechamento", expected.closing_value);
    set_deal(oid, "rmotivo", expected.reason);
    EXPECT_EQ(crm_->Diadecorrido(oid), expected.age);
  }
}

}  // namespace
}  // namespace pradelis::tests
