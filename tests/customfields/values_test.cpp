#include "tests/customfields/field_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

using FieldValues = FieldTest;

TEST_F(FieldValues, EachTypeHasItsColumn) {
  const struct {
    std::int32_t field;
    Variant value;
    std::string stored, shown;
  } cases[] = {
      {9001, "d'Oeste", "d'Oeste|null|null|null", "d'Oeste"},
      {9002, "502", "Açougue|502|null|null", "502"},
      {9002, std::int32_t{99}, "|99|null|null", "99"},
      {9003, "5/3/2026", "null|null|05/03/2026|null", "05/03/2026"},
      {9004, "3", "null|null|null|3", "3"},
      {16353, "qualquer texto", "qualquer texto|null|null|null", "qualquer texto"},
  };
  for (const auto& expected : cases) {
    EXPECT_EQ(crm_->Alterar_Aditivo(std::int32_t{501}, expected.field, expected.value), "0");
    EXPECT_EQ(stored(expected.field), expected.stored);
    EXPECT_EQ(crm_->Aditivo_Ver(501, expected.field), expected.shown);
  }
}

TEST_F(FieldValues, ANewValueClearsTheOtherColumnsOfTheOneRow) {
  crm_->Alterar_Aditivo("501", "9002", "502");
  const std::string row = rows("select oid from aditivo");
  run("update dadoadicional set rtipo = 1 where oid = 9002");
  EXPECT_EQ(crm_->Alterar_Aditivo("501", "9002", "um texto", false), "0");
  EXPECT_EQ(stored(9002), "um texto|null|null|null");
  EXPECT_EQ(rows("select oid from aditivo"), row);
  crm_->Alterar_Aditivo("501", "9002", Variant::null());
  EXPECT_EQ(stored(9002), "null|null|null|null");
  EXPECT_EQ(crm_->Aditivo_Ver(501, 9002), "");
}

TEST_F(FieldValues, RunTheseStatements) {
  StatementRecorder recorder;
  crm_->Alterar_Aditivo("501", " 9002", "502");
  crm_->Aditivo_Ver(501, 9002);
  crm_->Alterar_Aditivo("501", " 16353 ", "x");
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{
                "static: select rtipo from dadoadicional where oid= 9002",
                "static: SELECT nome FROM item WHERE oid = 502",
                "updatable: select * from aditivo where ritem=501 and rdefinicao= 9002",
                "static: select rtipo from dadoadicional where oid=9002",
                "static: select NVALOR from aditivo where NVALOR is not null and ritem=501 and "
                "rdefinicao=9002",
                "static: select rtipo from dadoadicional where oid= 16353 ",
                "updatable: select * from aditivo where ritem=501 and rdefinicao= 16353 ",
            }));
}

TEST_F(FieldValues, WhatCannotBeStoredIsSaidInWords) {
  EXPECT_EQ(crm_->Alterar_Aditivo(std::int32_t{501}, std::int32_t{404}, "x"),
            "ERRO : O Aditivo de oid 404 não existe mais");
  EXPECT_EQ(crm_->Aditivo_Ver(501, 404), "ERRO : O Aditivo de oid 404 não existe mais");
  EXPECT_EQ(
      crm_->Alterar_Aditivo(std::int32_t{501}, std::int32_t{9001}, "x", false),
      "A propriedade que define se cria o aditivo se não houver, foi configurada como falsa e não havia "
      "este aditivo cadastrado para o Item.");
  EXPECT_EQ(rows("select count(*) from aditivo"), "0");
  EXPECT_EQ(crm_->Aditivo_Ver(501, 9001), "");
}

TEST_F(FieldValues, FailuresNameTheMethodAndWriteNothing) {
  const struct {
    Variant record, field, value;
    std::int32_t number;
  } cases[] = {
      {"501", "9003", "ontem", error_number::value_does_not_fit},
      {"501", "9002", "Açougue", error_number::wrong_statement},
      {"501", "nove mil", "x", error_number::wrong_statement},
      {"5 1", "9001", "x", error_number::wrong_statement},
      {Variant::missing(), "9001", "x", error_number::type_mismatch},
  };
  for (const auto& expected : cases) {
    const Failure failure =
        failure_of([&] { crm_->Alterar_Aditivo(expected.record, expected.field, expected.value); });
    EXPECT_EQ(failure.number, expected.number);
    EXPECT_EQ(failure.source, "Pradelis.CRM.Alterar_Aditivo");
    EXPECT_EQ(rows("select count(*) from aditivo"), "0");
  }
  run("update dadoadicional set rtipo = null where oid = 9001");
  const Failure untyped = failure_of([&] { crm_->Aditivo_Ver(501, 9001); });
  EXPECT_EQ(untyped.number, error_number::invalid_use_of_null);
  EXPECT_EQ(untyped.source, "Pradelis.CRM.Aditivo_Ver");
}

}  // namespace
}  // namespace pradelis::tests
