#include "tests/deals/deal_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

class DealEditing : public DealTest {
 protected:
  std::string change(const Variant& deal, const std::string& date, const std::string& classes,
                     std::int32_t indicator = 0, const std::string& note = "") {
    return crm_->Alterar_Negocio(deal, 702, 602, date, classes, indicator, note, 7.25, step_);
  }
};

TEST_F(DealEditing, RewritesTheDealItsNoteAndAllItsClasses) {
  const std::int32_t oid = new_deal("Reforma", "1,2,3");
  StatementRecorder recorder;
  EXPECT_EQ(change(oid, "11/04/2026", "3, 9", 888, "segunda nota"), "0");
  EXPECT_EQ(step_, 9);
  const std::string deal_text = to_text(oid);
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{
                "updatable: Select * from crm_pos_negocio where oid = " + deal_text,
                "updatable: select observacao from item where oid=" + deal_text,
                "execute: delete from CRM_CLASSEPRODUTOS_NEGOCIO where rnegocio = " + deal_text,
                "updatable: select * from CRM_CLASSEPRODUTOS_NEGOCIO where 1=1",
                "updatable: select * from CRM_CLASSEPRODUTOS_NEGOCIO where 1=1",
            }));
  EXPECT_EQ(deal(oid, "rcontato, rvendedor, dataprovavel, valorprovavel, rindicador"),
            "702|601|11/04/2026|7,25|888");
  EXPECT_EQ(observation(oid), "segunda nota");
  EXPECT_EQ(classes(oid), "3\n9");

  change(oid, "", "");
  EXPECT_EQ(deal(oid, "dataprovavel, rindicador"), "null|null");
  EXPECT_EQ(observation(oid), "segunda nota");
  EXPECT_EQ(classes(oid), "");
}

TEST_F(DealEditing, AFailureHasTheShortNameAndTheStep) {
  const std::int32_t oid = new_deal("Reforma", "1,2");
  const struct {
    Variant deal;
    std::string date, classes;
    std::int32_t number;
    std::int16_t step;
    std::string classes_left;
  } cases[] = {
      {"1 2", "", "", error_number::wrong_statement, 2, "1\n2"},
      {no_deal, "", "", error_number::no_current_row, 3, "1\n2"},
      {oid, "amanhã", "", error_number::value_does_not_fit, 3, "1\n2"},
      {oid, "", "8,x,9", error_number::value_does_not_fit, 8, "8"},
  };
  for (const auto& expected : cases) {
    const Failure failure = failure_of([&] { change(expected.deal, expected.date, expected.classes); });
    EXPECT_EQ(failure.number, expected.number);
    EXPECT_EQ(failure.source, "Pradelis.CRM.Alterar_Neg");
    EXPECT_EQ(step_, expected.step);
    EXPECT_EQ(classes(oid), expected.classes_left);
  }
}

TEST_F(DealEditing, HandsADealOverWithoutAskingWhetherItIsThere) {
  const std::int32_t oid = new_deal();
  StatementRecorder recorder;
  EXPECT_EQ(crm_->Alterar_Vendedor_Negocio("655", oid), Variant("0"));
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{"execute: Update crm_pos_negocio Set rVendedor=655  where oid = " +
                                      to_text(oid)}));
  EXPECT_EQ(deal(oid, "rvendedor"), "655");
  EXPECT_EQ(crm_->Alterar_Vendedor_Negocio(std::int32_t{655}, no_deal), Variant("0"));
  const Failure failure = failure_of([&] { crm_->Alterar_Vendedor_Negocio("Ana", oid); });
  EXPECT_EQ(failure.number, error_number::wrong_statement);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Alterar_Vendedor_Negocio");
}

}  // namespace
}  // namespace pradelis::tests
