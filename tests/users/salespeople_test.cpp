#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

class Salespeople : public ComponentTest {
 protected:
  bool register_salesperson(const std::string& groups = "12,15") {
    return crm_->Cadastrar_Vendedor("Ana d'Oeste", "Rua d'Ouro", std::int32_t{12}, "fundos", "Centro",
                                    "13000-000", "60100", groups, login_, "segredo", "601", person_,
                                    Variant());
  }
  std::string written() {
    return rows(
        "select (select count(*) from item where nome in ('Ana d''Oeste', 'ANA')), (select count(*) "
        "from agrupamento where oid > 100000), (select count(*) from comunicacao), (select count(*) "
        "from endereco where rua = 'Rua d''Ouro')");
  }

  Variant login_ = "ana", person_;
};

TEST_F(Salespeople, RegistrationMakesPersonAccountGroupsAndAddress) {
  StatementRecorder recorder;
  const auto base = double_base();
  EXPECT_TRUE(register_salesperson("12, 15"));
  EXPECT_EQ(login_, Variant("ANA"));
  ASSERT_TRUE(person_.is(VariantType::Int32));
  const std::string person = to_text(person_);
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{
                "static: SELECT * FROM usuario_r WHERE LTRIM(RTRIM(nome)) = 'ANA' ORDER BY nome",
                "table: PESSOA", "table: PESSOAFISICA", "table: USUARIO"}));
  EXPECT_EQ(base->calls, (std::vector<std::string>{"IncluirItem(601,Ana d'Oeste,45,7,7,-,-,601,,,0)",
                                                   "IncluirItem(601,ANA,65,7,26736,-,-,601,,,0)"}));
  EXPECT_EQ(rows("select count(*) from pessoa p, pessoafisica f where p.oid = f.oid and p.oid = " + person),
            "1");
  const std::string account = rows("select oid from item where nome = 'ANA'");
  EXPECT_EQ(rows("select senha from usuario where oid = " + account),
            crm_->QLCBase()->CodificarSenha("ANAsegredo", 11));
  EXPECT_EQ(rows("select iniciovalidade from usuario where oid = " + account), "null");
  EXPECT_EQ(rows("select rgrupo, rpapel from agrupamento where ritem = " + account), "26736|7");
  EXPECT_EQ(rows("select rgrupo, rpapel from agrupamento where ritem = " + person + " order by rgrupo"),
            "12|26735\n15|26735");
  EXPECT_EQ(rows("select rtipo, rendereco from comunicacao where ritem = " + person), "1121|" + account);
  EXPECT_EQ(
      rows("select rcidade, cep, bairro, complemento, numero, rua from endereco where ritem = " + person),
      "60100|13000-000|Centro|fundos|12|Rua d'Ouro");
}

TEST_F(Salespeople, ATakenLoginIsRefusedInUpperCase) {
  add_item(900, "ANA ", 26736, 65);
  run("insert into usuario (oid) values (900)");
  login_ = " ana";
  const Failure failure = failure_of([&] { register_salesperson(); });
  EXPECT_EQ(failure.number, 1001);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Cadastrar_Vendedor");
  EXPECT_EQ(failure.description, "Já existe o vendedor  ANA no banco de dados.");
  EXPECT_EQ(login_, Variant(" ANA"));
  EXPECT_EQ(written(), "0|0|0|0");

  login_ = "d'ana";
  EXPECT_EQ(failure_of([&] { register_salesperson(); }).number, error_number::wrong_statement);
}

TEST_F(Salespeople, EachStepThatIsNotRecordedEndsItThere) {
  const auto base = double_base();
  const struct {
    std::int32_t refused_group;
    std::optional<bool> relates;
    std::string groups, written;
  } cases[] = {
      {26736, {}, "12,15", "2|0|0|0"},
      {15, {}, "12,15,16", "2|2|0|0"},
      {0, false, "12,15", "2|3|0|0"},
      {0, {}, "", "2|1|1|1"},
  };
  for (const auto& expected : cases) {
    base->groups = [&](std::int32_t, std::int32_t group) { return group != expected.refused_group; };
    base->relates = expected.relates;
    const bool done = expected.refused_group == 0 && !expected.relates;
    person_ = Variant();
    EXPECT_EQ(register_salesperson(expected.groups), done);
    EXPECT_EQ(person_.is_empty(), !done);
    EXPECT_EQ(written(), expected.written);
    run("delete from item where nome in ('Ana d''Oeste', 'ANA')");
    run("delete from agrupamento where oid > 100000");
  }
  EXPECT_EQ(failure_of([&] { register_salesperson("12,todos"); }).number, error_number::type_mismatch);
  EXPECT_EQ(written(), "2|2|1|1");
}

TEST_F(Salespeople, OnlyTheFirstMembershipMoves) {
  add_membership(640, 12);
  add_membership(640, 15);
  add_membership(640, 31, 9);
  StatementRecorder recorder;
  EXPECT_TRUE(crm_->Alterar_Grupo_Vendedor(18, 640));
  EXPECT_EQ(
      recorder.take(),
      (std::vector<std::string>{"updatable: select * from agrupamento where rpapel=26735 and ritem = 640"}));
  EXPECT_EQ(rows("select rgrupo from agrupamento where ritem = 640 order by oid"), "18\n15\n31");
  EXPECT_TRUE(crm_->Alterar_Grupo_Vendedor(18, 641));
  EXPECT_EQ(rows("select count(*) from agrupamento where ritem = 641"), "0");
}

}  // namespace
}  // namespace pradelis::tests
