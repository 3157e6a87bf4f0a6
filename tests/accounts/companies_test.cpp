#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

class Companies : public ComponentTest {
 protected:
  std::string register_company(const Variant& name) {
    return crm_->Cadastrar_Empresa("Padaria Ltda", "601", "nota", name, "60100", "13000-000", "Centro",
                                   "fundos", std::int32_t{12}, "Rua d'Ouro", std::int32_t{2127});
  }

  std::string change_company(Variant& oid, const std::string& name = "Padaria Nova") {
    return crm_->Alterar_Empresa(oid, "Padaria S/A", std::int32_t{602}, "nota nova", name,
                                 std::int32_t{60200}, "14000-000", "Vila", "", "15", "Rua Nova");
  }

  std::string address(const std::string& company) {
    return rows("select rcidade, cep, bairro, complemento, numero, rua from endereco where ritem = " +
                company + " order by oid");
  }
};

TEST_F(Companies, RegistrationWritesCompanyClassificationsAndAddress) {
  StatementRecorder recorder;
  const auto base = double_base();
  const std::string oid = register_company("Padaria d'Oeste");
  ASSERT_NE(number("select count(*) from item where oid = " + oid), 0);
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{
                                 "static: select oid from PessoaJuridica_r where UPPER(nome)=UPPER('Padaria "
                                 "d''Oeste')",
                                 "table: Pessoa",
                                 "table: pessoajuridica",
                             }));
  EXPECT_EQ(base->calls,
            (std::vector<std::string>{"IncluirItem(601,Padaria d'Oeste,46,7,7,-,-,Verdadeiro,nota,,0)"}));
  EXPECT_EQ(rows("select nome, cid, criadopor, observacao from item where oid = " + oid),
            "Padaria d'Oeste|46|601|nota");
  EXPECT_EQ(rows("select razaosocial from pessoa where oid = " + oid), "Padaria Ltda");
  EXPECT_EQ(rows("select count(*) from pessoajuridica where oid = " + oid), "1");
  EXPECT_EQ(rows("select rcategoria from classificacao where ritem = " + oid), "2127");
  EXPECT_EQ(address(oid), "60100|13000-000|Centro|fundos|12|Rua d'Ouro");
  EXPECT_EQ(
      rows("select rcategoria from classificacao c, endereco e where c.ritem = e.oid and e.ritem = " + oid),
      "1066");
  EXPECT_EQ(crm_->rs, nullptr);
}

TEST_F(Companies, ANameIsTakenWhateverItsCase) {
  const std::string taken = "Já Existe uma pessoa Jurídica Cadastrada com esse nome.";
  EXPECT_NE(register_company("São João d'Água"), taken);
  const std::string items = rows("select count(*) from item");
  EXPECT_EQ(register_company("SÃO JOÃO D'ÁGUA"), taken);
  EXPECT_EQ(rows("select count(*) from item"), items);
  EXPECT_NE(register_company("São João d'Água "), taken);
}

TEST_F(Companies, ARefusedClassificationEndsRegistrationWithTheEmptyText) {
  const auto base = double_base();
  base->classifies = [](std::int32_t, std::int32_t category) { return category != 2127; };
  EXPECT_EQ(register_company("sem categoria"), "");
  EXPECT_EQ(rows("select count(*) from item where nome = 'sem categoria'"), "1");
  EXPECT_EQ(rows("select count(*) from endereco where rua = 'Rua d''Ouro'"), "0");

  base->classifies = [](std::int32_t, std::int32_t category) { return category != 1066; };
  EXPECT_EQ(register_company("sem categoria do endereço"), "");
  EXPECT_EQ(rows("select count(*) from endereco where rua = 'Rua d''Ouro'"), "1");
  EXPECT_EQ(rows("select count(*) from pessoa where razaosocial = 'Padaria Ltda'"), "0");
}

TEST_F(Companies, ChangeRewritesNameAndFirstAddress) {
  const std::string registered = register_company("Padaria");
  Variant oid = registered;
  StatementRecorder recorder;
  const auto base = double_base();
  EXPECT_EQ(change_company(oid), "0");
  EXPECT_EQ(oid, Variant(to_int32(Variant(registered))));
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{"updatable: SELECT RAZAOSOCIAL FROM pessoa WHERE OID=" + registered,
                                      "forward: SELECT OID FROM endereco WHERE ritem=" + registered}));
  EXPECT_EQ(base->calls,
            (std::vector<std::string>{"AlterarItem(" + registered + ",602,Padaria Nova,-,-,nota nova,-)"}));
  EXPECT_EQ(rows("select nome, observacao, criadopor, atualizadopor from item where oid = " + registered),
            "Padaria Nova|nota nova|601|602");
  EXPECT_EQ(rows("select razaosocial from pessoa where oid = " + registered), "Padaria S/A");
  EXPECT_EQ(address(registered), "60200|14000-000|Vila||15|Rua Nova");

  const std::string other = register_company("Outra");
  Variant other_oid = other;
  EXPECT_EQ(change_company(other_oid, "Padaria Nova"), "0") << "only registration asks for a free name";
}

TEST_F(Companies, OnlyOneOfTwoAddressesChanges) {
  const std::string oid = register_company("Duas");
  crm_->QLCBase()->IncluirEndereco(to_int32(Variant(oid)), 1, "", "", "", "", "segunda", "", 601);
  Variant company = oid;
  change_company(company);
  EXPECT_EQ(rows("select count(*) from endereco where rua = 'Rua Nova' and ritem = " + oid), "1");
  EXPECT_EQ(rows("select count(*) from endereco where ritem = " + oid), "2");
}

TEST_F(Companies, ChangeFailsWithoutAddressOrCompany) {
  const std::string oid = register_company("Sem endereço");
  run("delete from endereco where ritem = " + oid);
  Variant company = oid;
  const Failure no_address = failure_of([&] { change_company(company); });
  EXPECT_EQ(no_address.number, 1001);
  EXPECT_EQ(no_address.source, "Pradelis.CRM.Alterar_Empresa");
  EXPECT_EQ(no_address.description, "Não foi possível obter o OID do endereço da empresa.");
  EXPECT_EQ(rows("select nome from item where oid = " + oid), "Padaria Nova");

  Variant unknown = std::int32_t{99};
  const Failure failure = failure_of([&] { change_company(unknown); });
  EXPECT_EQ(failure.number, error_number::no_current_row);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Alterar_Empresa");
  EXPECT_EQ(failure_of([&] { register_company(Variant::null()); }).number, error_number::invalid_use_of_null);
}

}  // namespace
}  // namespace pradelis::tests
