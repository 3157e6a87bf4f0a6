#include "tests/support/component_test.h"
#include "tests/support/recording.h"

namespace pradelis::tests {
namespace {

/// Person 10 is member of group 300, which has children 301 and 302; 301 has child 303. Members: 20 in 300,
/// 21 in 301, 22 in 303.
class Visibility : public ComponentTest {
 protected:
  Visibility() {
    add_group(300, 7);
    add_group(301, 300);
    add_group(302, 300);
    add_group(303, 301);
    add_membership(10, 300);
    add_membership(20, 300);
    add_membership(21, 301);
    add_membership(22, 303);
  }
  component::GrupoUsuarios& groups() { return *crm_->cGrupoUsuarios(); }
};

TEST_F(Visibility, ListsFollowTheKindOfSearch) {
  EXPECT_EQ(groups().fSubGrupos(300), "301, 303, 302");
  for (const std::int32_t kind : {1, 3, 9}) {
    EXPECT_EQ(groups().fSubGrupos(300, static_cast<std::int16_t>(kind)), "301, 302");
  }
  EXPECT_EQ(groups().fSubGrupos(303), "");

  EXPECT_EQ(groups().fGruposVisiveis(10), "300");
  EXPECT_EQ(groups().fGruposVisiveis(10, 2), "300, 301, 303, 302");
  EXPECT_EQ(groups().fGruposVisiveis(10, 0), "300, 301, 303, 302");
  EXPECT_EQ(groups().fGruposVisiveis(10, 3), "301, 303, 302");

  EXPECT_EQ(groups().fUsuariosVisiveis(10), "21, 22, 10");
  EXPECT_EQ(groups().fUsuariosVisiveis(10, 1), "10, 20, 10");
  EXPECT_EQ(groups().fUsuariosVisiveis(10, 2), "10, 20, 21, 22, 10");
  EXPECT_EQ(groups().fUsuariosVisiveis(512), "512");
  EXPECT_EQ(groups().fGruposVisiveis(512, 2), "");
}

TEST_F(Visibility, OnlyTheMemberRoleShowsAGroupButEveryMemberIsListed) {
  add_membership(11, 302, 9);
  add_membership(11, 301);
  EXPECT_EQ(groups().fGruposVisiveis(11), "301");
  add_membership(20, 302);
  EXPECT_EQ(groups().fUsuariosGRP("302"), "11, 20");
  EXPECT_EQ(groups().fUsuariosGRP("300"), "10, 20");
}

TEST_F(Visibility, DeletedGroupsAreNotWalked) {
  run("insert into excluido (oid) values (301)");
  EXPECT_EQ(groups().fSubGrupos(300), "302");
}

TEST_F(Visibility, EachStatementStandsInTheObject) {
  StatementRecorder recorder;
  groups().fUsuariosVisiveis(10);
  const auto children = [](const std::string& group) {
    return "static: SELECT oid FROM item_r WHERE rescopo = " + group;
  };
  const std::string last = "SELECT ritem FROM agrupamento WHERE rgrupo IN (301, 303, 302)";
  EXPECT_EQ(recorder.take(),
            (std::vector<std::string>{"static: SELECT * FROM agrupamento WHERE ritem = 10 and rpapel = 26735",
                                      children("300"), children("301"), children("303"), children("302"),
                                      "static: " + last}));
  EXPECT_EQ(groups().strSQL, last);
}

TEST_F(Visibility, DepthHasNoLimitButACycleFails) {
  constexpr std::int32_t first = 200000, last = 205000;
  run(concat("insert into item (oid, nome, cid, rescopo) with recursive n(i) as (select ", first,
             " union all select i + 1 from n where i < ", last, ") select i, 'g', 18, i - 1 from n"));
  const std::string deep = groups().fSubGrupos(first - 1);
  EXPECT_TRUE(deep.starts_with("200000, 200001, ") && deep.ends_with(", 204999, 205000"));

  run(concat("update item set rescopo = ", last, " where oid = ", first));
  const Failure failure = failure_of([&] { groups().fSubGrupos(last); });
  EXPECT_EQ(failure.number, error_number::out_of_stack);
  EXPECT_EQ(failure.source, "Pradelis.GrupoUsuarios.fSubGrupos");
}

TEST_F(Visibility, FailuresCarryTheOutermostName) {
  const Failure empty = failure_of([&] { groups().fUsuariosGRP("300,"); });
  EXPECT_EQ(empty.number, error_number::wrong_statement);
  EXPECT_EQ(empty.source, "Pradelis.GrupoUsuarios.fUsuariosGRP");
  EXPECT_EQ(groups().strSQL, "SELECT ritem FROM agrupamento WHERE rgrupo IN (300,)");

  run("update item set rescopo = 303 where oid = 301");
  EXPECT_EQ(failure_of([&] { groups().fUsuariosVisiveis(21); }).source,
            "Pradelis.GrupoUsuarios.fUsuariosVisiveis");
  EXPECT_EQ(failure_of([&] { crm_->String_Empresa_Vendedor(21); }).source,
            "Pradelis.CRM.String_Empresa_Vendedor");
}

TEST_F(Visibility, ASubordinateIsOneOfTheSessionsList) {
  const struct {
    Variant list;
    std::int32_t person;
    bool subordinate;
  } cases[] = {{"21, 22, 10", 22, true}, {"21, 22, 10", 21, true}, {"21, 22, 10", 23, false},
               {"", 22, false},          {Variant(), 22, false},   {std::int32_t{22}, 22, true},
               {"22, nenhum", 22, true}};
  for (const auto& expected : cases) {
    host_.set_visible_users(expected.list);
    EXPECT_EQ(crm_->VerificaSubordinado(expected.person), expected.subordinate);
  }
}

TEST_F(Visibility, ASubordinateCannotBeFoundInABrokenList) {
  std::string longest = "1";
  for (int i = 0; i < 32767; ++i) longest += ",1";
  const struct {
    Variant list;
    std::int32_t number;
  } cases[] = {{"21, nenhum", error_number::type_mismatch},
               {"21,", error_number::type_mismatch},
               {Variant::null(), error_number::invalid_use_of_null},
               {longest, 0},
               {longest + ",1", error_number::overflow}};
  for (const auto& expected : cases) {
    host_.set_visible_users(expected.list);
    EXPECT_EQ(failure_of([&] { crm_->VerificaSubordinado(22); }).number, expected.number);
  }
  host_.clear_session();
  const Failure failure = failure_of([&] { crm_->VerificaSubordinado(22); });
  EXPECT_EQ(failure.number, error_number::type_mismatch);
  EXPECT_EQ(failure.source, "Pradelis.CRM.VerificaSubordinado");
}

}  // namespace
}  // namespace pradelis::tests
