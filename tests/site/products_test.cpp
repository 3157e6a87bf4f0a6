#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

class Products : public SiteTest {
 protected:
  std::string names() { return database_.rows("select oid, nome from crm_produtos order by oid"); }

  Visitor leader_ = logged_in("helena");
  Visitor member_ = logged_in("ana");
};

TEST_F(Products, AreKeptByWhoAdministersAndSeenByAll) {
  EXPECT_EQ(leader_.post("/produtos/novo", {{"nome", "O'Brien <b>\"&"}}).status, 303);
  EXPECT_TRUE(contains(member_.get("/produtos"), "O&#39;Brien &lt;b&gt;&quot;&amp;"));
  EXPECT_TRUE(contains(leader_.post("/produtos/novo", {{"nome", "O'Brien <b>\"&"}}),
                       "Já existe um produto com esse nome"));
  const std::string before = names();
  for (const char* target : {"/produtos/novo", "/produtos/1/alterar", "/produtos/1/excluir"}) {
    EXPECT_EQ(member_.post(target, {{"nome", "x"}}).status, 404) << target;
    EXPECT_EQ(member_.get(target).status, 404) << target;
  }
  EXPECT_EQ(names(), before);
  EXPECT_EQ(leader_.post("/produtos/1/alterar", {{"nome", "Balcão"}}).status, 303);
  EXPECT_EQ(names(), "1|Balcão");
  EXPECT_EQ(leader_.post("/produtos/2/alterar", {{"nome", "x"}}).status, 404);
}

TEST_F(Products, LeaveNoDealBehindThatNamesThem) {
  leader_.post("/produtos/novo", {{"nome", "Balcão"}});
  const std::int32_t deal = add_deal(member_, add_company(member_, "Padaria"), "Reforma");
  database_.run(concat("update crm_pos_negocio set rproduto = 1 where oid = ", deal));
  EXPECT_TRUE(contains(leader_.get("/produtos/1/excluir"), "1 negócio que o usa."));
  EXPECT_EQ(leader_.post("/produtos/1/excluir").status, 303);
  EXPECT_EQ(names(), "");
  EXPECT_EQ(number("select count(*) from crm_pos_negocio where rproduto is not null"), 0);
}

}  // namespace
}  // namespace pradelis::tests
