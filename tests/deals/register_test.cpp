#include "tests/deals/deal_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

using DealRegistration = DealTest;

TEST_F(DealRegistration, WritesTheDealAndItsClassesStepByStep) {
  StatementRecorder recorder;
  const auto base = double_base();
  const Variant result =
      crm_->Cadastrar_Negocio(501, 0, 601, "10/04/2026", " 4 ,5", 0, "nota", "Obra d'água", 1500.5, step_);
  EXPECT_EQ(step_, 5);
  const std::string oid = to_text(result.get<std::int32_t>());
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{
                "static: select * from crm_pos_negocio where rpessoa=501 and oid in (select oid from item "
                "where nome='Obra d''água')",
                "table: crm_pos_negocio",
                "updatable: select * from CRM_CLASSEPRODUTOS_NEGOCIO where 1=1",
                "updatable: select * from CRM_CLASSEPRODUTOS_NEGOCIO where 1=1",
            }));
  EXPECT_EQ(base->calls,
            (std::vector<std::string>{"IncluirItem(601,Obra d'água,16075,7,7,-,-,601,nota,,0)"}));
  EXPECT_EQ(rows("select nome, cid, criadopor, observacao from item where oid = " + oid),
            "Obra d'água|16075|601|nota");
  EXPECT_EQ(deal(result.get<std::int32_t>(),
                 "rpessoa, rcontato, rvendedor, valorprovavel, rindicador, fechamento, valorfechamento, "
                 "rmotivo"),
            "501|0|601|1500,5|null|null|null|null");
  EXPECT_EQ(to_text(value("select dataprovavel from crm_pos_negocio where oid = " + oid)), "10/04/2026");
  EXPECT_EQ(classes(result.get<std::int32_t>()), "4\n5");
}

TEST_F(DealRegistration, AnEmptyDateAndNoIndicatorStayNull) {
  const Variant without = register_deal("sem data");
  EXPECT_EQ(deal(without.get<std::int32_t>(), "dataprovavel, rindicador"), "null|null");
  const Variant with = register_deal("com indicador", 501, "", "", 888);
  EXPECT_EQ(deal(with.get<std::int32_t>(), "rindicador"), "888");
}

TEST_F(DealRegistration, ANameIsTakenForItsCompanyOnly) {
  const Variant first = register_deal("Fazenda 'Boa'");
  EXPECT_TRUE(first.is(VariantType::Int32));
  const std::string items = rows("select count(*) from item");

  EXPECT_EQ(register_deal("Fazenda 'Boa'"), Variant("Já existe um Negócio dessa Empresa com esse Nome"));
  EXPECT_EQ(step_, 1);
  EXPECT_EQ(rows("select count(*) from item"), items);

  EXPECT_TRUE(register_deal("Fazenda 'Boa'", 502).is(VariantType::Int32));
  EXPECT_TRUE(register_deal("fazenda 'boa'").is(VariantType::Int32));
}

TEST_F(DealRegistration, AnItemWithoutIdentifierEndsItWithAText) {
  const auto base = double_base();
  for (const std::int32_t oid : {0, -3}) {
    base->new_item = oid;
    EXPECT_EQ(register_deal("sem item"), Variant("Erro ao gerar OID do contato" + to_text(oid)));
    EXPECT_EQ(step_, 2);
  }
  EXPECT_EQ(rows("select count(*) from crm_pos_negocio"), "0");
}

TEST_F(DealRegistration, AFailureTellsTheStepAndLeavesWhatWasWritten) {
  const struct {
    std::string date, classes;
    std::int32_t number;
    std::int16_t step;
    std::string source, deals, classes_written;
  } cases[] = {
      {"31/2/2026", "", error_number::value_does_not_fit, 3, "", "0", "0"},
      {"", "4,abc,5", error_number::value_does_not_fit, 5, "Pradelis.CRM.CadastrarClasseProduto", "1", "1"},
      {"", "4,,5", error_number::value_does_not_fit, 5, "Pradelis.CRM.CadastrarClasseProduto", "2", "2"},
      {"", std::string(32768, ','), error_number::overflow, 5, "", "3", "2"},
  };
  std::int32_t company = 510;
  for (const auto& expected : cases) {
    const Failure failure =
        failure_of([&] { register_deal("falha", ++company, expected.date, expected.classes); });
    EXPECT_EQ(failure.number, expected.number);
    EXPECT_EQ(failure.source, expected.source);
    EXPECT_EQ(step_, expected.step);
    EXPECT_EQ(rows("select count(*) from crm_pos_negocio"), expected.deals);
    EXPECT_EQ(rows("select count(*) from crm_classeprodutos_negocio"), expected.classes_written);
  }
}

}  // namespace
}  // namespace pradelis::tests
