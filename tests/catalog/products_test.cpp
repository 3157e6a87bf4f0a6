#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

class Products : public ComponentTest {
 protected:
  std::string products() { return rows("select oid, nome from crm_produtos order by oid"); }
};

TEST_F(Products, AreNumberedFromTheHighestAndNamedOnce) {
  StatementRecorder recorder;
  EXPECT_EQ(crm_->Cadastrar_Produto("Copo d'água"), Variant(std::int16_t{0}));
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{
                                 "forward: Select (isnull(max(oid),0) + 1) as OID from crm_produtos",
                                 "updatable: select * from crm_produtos where nome='Copo d''água'",
                             }));
  EXPECT_EQ(crm_->Cadastrar_Produto("Prato"), Variant(std::int16_t{0}));
  EXPECT_EQ(products(), "1|Copo d'água\n2|Prato");

  EXPECT_EQ(crm_->Cadastrar_Produto("Prato"), Variant("Já existe um produto com esse nome"));
  EXPECT_EQ(crm_->Cadastrar_Produto("PRATO"), Variant(std::int16_t{0}));
  run("delete from crm_produtos where oid = 1");
  crm_->Cadastrar_Produto("Garfo");
  EXPECT_EQ(products(), "2|Prato\n3|PRATO\n4|Garfo");
}

TEST_F(Products, AreRenamedToAnyName) {
  crm_->Cadastrar_Produto("Copo");
  crm_->Cadastrar_Produto("Prato");
  StatementRecorder recorder;
  EXPECT_EQ(crm_->Alterar_Produto("Copo", "2"), Variant("0"));
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{"updatable: Select nome from crm_produtos where oid=2"}));
  EXPECT_EQ(products(), "1|Copo\n2|Copo");
  EXPECT_EQ(crm_->rs, nullptr);

  const Failure unknown = failure_of([&] { crm_->Alterar_Produto("Faca", std::int32_t{9}); });
  EXPECT_EQ(unknown.number, error_number::no_current_row);
  EXPECT_EQ(unknown.source, "Pradelis.CRM.Alterar_Produto");
}

TEST_F(Products, LeaveTheDealsThatNameThem) {
  crm_->Cadastrar_Produto("Copo");
  for (const std::string deal : {"901, 1", "902, 1", "903, 2"}) {
    run("insert into crm_pos_negocio (oid, rproduto) values (" + deal + ")");
  }
  StatementRecorder recorder;
  EXPECT_EQ(crm_->Excluir_Produto(std::int32_t{1}), Variant("0"));
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{
                                 "execute: Delete from crm_produtos where oid = 1",
                                 "execute: Update crm_pos_negocio set rproduto = null where rproduto = 1",
                             }));
  EXPECT_EQ(products(), "");
  EXPECT_EQ(rows("select oid, rproduto from crm_pos_negocio order by oid"), "901|null\n902|null\n903|2");

  const Failure failure = failure_of([&] { crm_->Excluir_Produto("um"); });
  EXPECT_EQ(failure.number, error_number::wrong_statement);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Excluir_Produto");
}

}  // namespace
}  // namespace pradelis::tests
