#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

class Groups : public ComponentTest {
 protected:
  component::GrupoUsuarios& groups() { return *crm_->cGrupoUsuarios(); }
};

TEST_F(Groups, RegistrationAndChangePassEverythingOn) {
  const auto base = double_base();
  groups().strSQL = "antes";
  EXPECT_TRUE(groups().Cadastrar_Grupo(601, "Vendas d'Oeste", 7));
  const std::string oid = rows("select oid from item where nome = 'Vendas d''Oeste'");
  EXPECT_EQ(rows("select cid, rescopo, criadopor from item where oid = " + oid), "18|7|601");
  EXPECT_TRUE(groups().Alterar_Grupo(to_int32(Variant(oid)), 602, "Vendas", 45, "nota"));
  EXPECT_EQ(rows("select nome, rescopo, observacao, atualizadopor from item where oid = " + oid),
            "Vendas|45|nota|602");
  EXPECT_EQ(base->calls, (std::vector<std::string>{
                             "IncluirItem(601,Vendas d'Oeste,18,7,7,-,-,Verdadeiro,,,0)",
                             "RegistrarItem(26210,0," + oid + ")",
                             "AlterarItem(" + oid + ",602,Vendas,45,-,nota,-)",
                         }));
  EXPECT_EQ(groups().strSQL, "antes");
  const Failure failure = failure_of([&] { groups().Alterar_Grupo(99, 602, "x", 7); });
  EXPECT_EQ(failure.number, error_number::no_current_row);
  EXPECT_EQ(failure.source, "Pradelis.GrupoUsuarios.Alterar_Grupo");
}

TEST_F(Groups, DeletionGoesFromTheLeavesUp) {
  for (const auto& [oid, parent] : {std::pair{200, 7}, {201, 200}, {202, 200}, {203, 201}, {204, 203}}) {
    add_group(oid, parent);
  }
  const auto base = double_base();
  EXPECT_TRUE(groups().Excluir_Grupo(200, 601));
  const auto deleted = [](int oid) {
    const std::string text = std::to_string(oid);
    return "ExcluirItem(grupo " + text + ",,601,20090,18," + text + ",0)";
  };
  ASSERT_EQ(base->calls.size(), 5U);
  std::vector<std::string> first_pass(base->calls.begin(), base->calls.begin() + 2);
  std::sort(first_pass.begin(), first_pass.end());
  EXPECT_EQ(first_pass, (std::vector<std::string>{deleted(202), deleted(204)}));
  EXPECT_EQ(std::vector<std::string>(base->calls.begin() + 2, base->calls.end()),
            (std::vector<std::string>{deleted(203), deleted(201), deleted(200)}));
  EXPECT_EQ(rows("select count(*) from item_r where oid between 200 and 204"), "0");
  EXPECT_EQ(groups().strSQL, "SELECT nome, codigo, cid, oid FROM item WHERE oid = 200");
}

TEST_F(Groups, ALeafPassAsksForTheItemsThatAreNobodysScope) {
  add_group(200, 7);
  add_group(201, 200);
  StatementRecorder recorder;
  groups().Excluir_Grupo(200, 601);
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{
                "static: SELECT oid FROM item_r WHERE rescopo = 200",
                "static: SELECT oid FROM item_r WHERE rescopo = 201",
                "static: SELECT nome, codigo, cid, oid FROM item WHERE oid in (201) AND oid NOT IN (SELECT "
                "rescopo FROM item WHERE oid in (201))",
                "static: SELECT oid FROM item_r WHERE rescopo = 200",
                "static: SELECT nome, codigo, cid, oid FROM item WHERE oid = 200",
            }));
}

TEST_F(Groups, AnUnknownGroupIsDeletedToo) {
  EXPECT_TRUE(groups().Excluir_Grupo(99, 601));
  EXPECT_EQ(groups().strSQL, "SELECT nome, codigo, cid, oid FROM item WHERE oid = 99");
  EXPECT_EQ(rows("select count(*) from excluido"), "0");
}

TEST_F(Groups, ACycleFailsAndKeepsTheStatement) {
  add_group(200, 201);
  add_group(201, 200);
  const Failure failure = failure_of([&] { groups().Excluir_Grupo(200, 601); });
  EXPECT_EQ(failure.number, error_number::out_of_stack);
  EXPECT_EQ(failure.source, "Pradelis.GrupoUsuarios.Excluir_Grupo");
  EXPECT_EQ(rows("select count(*) from excluido"), "0");
  EXPECT_EQ(groups().strSQL.substr(0, 38), "SELECT oid FROM item_r WHERE rescopo =");
}

}  // namespace
}  // namespace pradelis::tests
