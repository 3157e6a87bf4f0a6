#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

using ReferenceData = ComponentTest;

TEST_F(ReferenceData, ACityIsRegisteredOnceInAllProvinces) {
  StatementRecorder recorder;
  const auto base = double_base();
  EXPECT_EQ(crm_->Cadastrar_Cidade(std::int32_t{35}, "19", "nota", "Santa Bárbara d'Oeste", "601"),
            Variant(std::int16_t{0}));
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{
                                 "updatable: select item.oid from item, cidade where item.oid=cidade.oid and "
                                 "UPPER(item.nome)=UPPER('Santa Bárbara d''Oeste')",
                                 "table: cidade"}));
  EXPECT_EQ(
      base->calls,
      (std::vector<std::string>{"IncluirItem(601,Santa Bárbara d'Oeste,19,7,7,-,-,Verdadeiro,nota,,0)"}));
  EXPECT_EQ(rows("select nome, cid, criadopor, observacao, rprovincia, ddd from item i, cidade c where "
                 "i.oid = c.oid"),
            "Santa Bárbara d'Oeste|19|601|nota|35|19");

  EXPECT_EQ(crm_->Cadastrar_Cidade(std::int32_t{36}, "", "", "SANTA BÁRBARA D'OESTE", "601"),
            Variant("Já existe uma cidade com esse nome"));
  EXPECT_EQ(rows("select count(*) from cidade"), "1");

  const Failure failure =
      failure_of([&] { crm_->Cadastrar_Cidade("SP", "", "", "sem província", std::int32_t{601}); });
  EXPECT_EQ(failure.number, error_number::value_does_not_fit);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Cadastrar_Cidade");
  EXPECT_EQ(rows("select count(*) from item where nome = 'sem província'"), "1");
}

TEST_F(ReferenceData, AnObjectIsClassifiedAsOftenAsAsked) {
  EXPECT_EQ(crm_->Cadastrar_Classificacao("501", std::int32_t{2121}), "0");
  EXPECT_EQ(crm_->Cadastrar_Classificacao(std::int32_t{501}, "2121"), "0");
  EXPECT_EQ(rows("select count(*), count(distinct oid) from classificacao where ritem = 501 and "
                 "rcategoria = 2121"),
            "2|2");
  const Failure failure = failure_of([&] { crm_->Cadastrar_Classificacao("501", "cliente"); });
  EXPECT_EQ(failure.number, error_number::value_does_not_fit);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Cadastrar_Classificacao");
}

TEST_F(ReferenceData, EveryDeletionIsEntered) {
  add_item(501, "Padaria", 7, 46);
  const Date when = make_date({.year = 2026, .month = 3, .day = 5, .hour = 14, .minute = 7, .second = 33});
  EXPECT_EQ(crm_->Excluir("Padaria d'Oeste", Variant::null(), 601, when, 20090, 46, 501),
            Variant(std::int16_t{0}));
  EXPECT_EQ(crm_->Excluir("Padaria d'Oeste", "", 601, when, 20090, 46, 501), Variant(std::int16_t{0}));
  EXPECT_EQ(rows("select nome, codigo, excluidopor, excluidoem, raplicativo, cid, oid from excluido"),
            "Padaria d'Oeste|null|601|05/03/2026 14:07:33|20090|46|501\n"
            "Padaria d'Oeste||601|05/03/2026 14:07:33|20090|46|501");
  EXPECT_EQ(rows("select count(*) from item where oid = 501"), "1");
  EXPECT_EQ(rows("select count(*) from item_r where oid = 501"), "0");
  EXPECT_EQ(crm_->rs, nullptr);
}

}  // namespace
}  // namespace pradelis::tests
