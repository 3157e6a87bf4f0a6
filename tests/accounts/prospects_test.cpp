#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

using Prospects = ComponentTest;

TEST_F(Prospects, HandingOverRewritesTheCreatorOfWhateverIsThere) {
  add_item(501, "Padaria", 7, 46);
  StatementRecorder recorder;
  EXPECT_EQ(crm_->Alterar_Vendedor_Prospect("602", std::int32_t{501}), Variant("0"));
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{"execute: update item set criadopor = 602 where oid = 501"}));
  EXPECT_EQ(rows("select criadopor from item where oid = 501"), "602");
  EXPECT_EQ(crm_->Alterar_Vendedor_Prospect("602", std::int32_t{99}), Variant("0"));
  const Failure failure = failure_of([&] { crm_->Alterar_Vendedor_Prospect("Ana", std::int32_t{501}); });
  EXPECT_EQ(failure.number, error_number::wrong_statement);
  EXPECT_EQ(failure.source, "Pradelis.CRM.Alterar_Vendedor_Prospect");
}

TEST_F(Prospects, SelectionOfCompaniesTakesItsOwnersFromSessionOrGroups) {
  host_.set_visible_users("12,15");
  EXPECT_EQ(crm_->String_Empresa_Vendedor(0, false),
            Variant("select oid from item where ((criadopor in (12,15) and oid in (select ritem from "
                    "classificacao where RCATEGORIA=2127)))"));
  EXPECT_EQ(crm_->String_Empresa_Vendedor(),
            Variant("select oid from item where ((criadopor in (12,15) and oid in (select ritem from "
                    "classificacao where RCATEGORIA=2127)) or (oid in (select ritem from classificacao where "
                    "RCATEGORIA=2121)))"));
  add_group(200, 7);
  add_group(201, 200);
  add_membership(640, 200);
  add_membership(641, 201);
  EXPECT_EQ(crm_->String_Empresa_Vendedor(640, false),
            Variant("select oid from item where ((criadopor in (641, 640) and oid in (select ritem from "
                    "classificacao where RCATEGORIA=2127)))"));
  host_.clear_session();
  EXPECT_EQ(failure_of([&] { crm_->String_Empresa_Vendedor(); }).source,
            "Pradelis.CRM.String_Empresa_Vendedor");
}

TEST_F(Prospects, ClientsAreEverybodysAndProspectsTheirOwners) {
  host_.set_visible_users("12");
  const std::int32_t categories[] = {2127, 2127, 2121, 1000};
  const std::int32_t owners[] = {12, 13, 13, 12};
  for (std::int32_t i = 0; i < 4; ++i) {
    add_item(500 + i, "empresa", 7, 46);
    crm_->Alterar_Vendedor_Prospect(owners[i], 500 + i);
    crm_->Cadastrar_Classificacao(500 + i, categories[i]);
  }
  EXPECT_EQ(rows(to_text(crm_->String_Empresa_Vendedor()) + " order by oid"), "500\n502");
  EXPECT_EQ(rows(to_text(crm_->String_Empresa_Vendedor(0, false)) + " order by oid"), "500");
}

class ScopeWalk : public ComponentTest {
 protected:
  ScopeWalk() {
    add_branch(300, "filial um", 299);
    add_branch(301, "filial dois", 299);
    add_item(302, "contato", 300);
    add_salesperson(310, "vendedor", 301);
  }
};

TEST_F(ScopeWalk, FollowsTheFirstChildDownAndAppendsTheLast) {
  const struct {
    Variant before, node, after;
    std::string result;
  } cases[] = {
      {"", std::int32_t{300}, std::int32_t{300}, "0"}, {Variant(), "300", "300", "0"},
      {"7", std::int32_t{300}, "7,300", "0"},          {std::int32_t{0}, std::int32_t{300}, "0,300", "0"},
      {"", std::int32_t{299}, std::int32_t{300}, ""},  {"", std::int32_t{301}, std::int32_t{310}, ""},
      {"12", std::int32_t{301}, "12,310", ""},
  };
  for (const auto& expected : cases) {
    crm_->sValor = expected.before;
    EXPECT_EQ(crm_->String_filho(expected.node), expected.result);
    EXPECT_EQ(crm_->sValor, expected.after);
    EXPECT_EQ(crm_->rs, nullptr);
  }
}

TEST_F(ScopeWalk, AsksLevelByLevel) {
  StatementRecorder recorder;
  crm_->String_filho(std::int32_t{301});
  const auto level = [](const std::string& oid) {
    return "static: select oid from item where rescopo = " + oid +
           " and (oid in  (select oid from vendedor_r) or oid in  (select oid from filial_r))";
  };
  EXPECT_EQ(recorder.take(), (std::vector<std::string>{level("301"), level("310")}));
}

TEST_F(ScopeWalk, ACycleOrABadNodeFailsUnderItsOwnSpelling) {
  add_branch(320, "filial sobre si", 321);
  add_branch(321, "filial sob si", 320);
  const struct {
    Variant node;
    std::int32_t number;
  } cases[] = {{std::int32_t{320}, error_number::out_of_stack}, {"3 2", error_number::wrong_statement}};
  for (const auto& expected : cases) {
    crm_->sValor = "antes";
    const Failure failure = failure_of([&] { crm_->String_filho(expected.node); });
    EXPECT_EQ(failure.number, expected.number);
    EXPECT_EQ(failure.source, "Pradelis.CRM.String_Filho");
    EXPECT_EQ(crm_->rs, nullptr);
    EXPECT_EQ(crm_->sValor, Variant("antes"));
  }
}

}  // namespace
}  // namespace pradelis::tests
