#include <gtest/gtest.h>

#include <string>

#include "tests/support/database.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

class Views : public ::testing::Test {
 protected:
  void item(std::int32_t oid, const char* nome, std::int32_t cid = 45) {
    database_.run(
        concat("insert into item (oid, nome, cid, rescopo) values (", oid, ", '", nome, "', ", cid, ", 7)"));
  }
  void relate(std::int32_t oid, std::int32_t person, std::int32_t user, std::int32_t type = 1121) {
    database_.run(concat("insert into comunicacao (oid, rtipo, ritem, rendereco) values (", oid, ", ", type,
                         ", ", person, ", ", user, ")"));
  }
  void exclude(std::int32_t oid) { database_.run(concat("insert into excluido (oid) values (", oid, ")")); }

  TemporaryDatabase database_;
};

TEST_F(Views, LeaveOutDeletedObjects) {
  item(100001, "Matriz");
  for (const char* table : {"pessoa", "pessoajuridica", "usuario", "filial"}) {
    database_.run(concat("insert into ", table, " (oid) values (100001)"));
  }
  database_.run("insert into categoria (oid, rsuper) values (100001, 46)");
  database_.run("insert into utilizacao (oid, ritem, runidade, rutilizado) values (100002, 5, 6, 100001)");
  const char* const views[] = {"item_r",           "usuario_r",   "usuario_v", "pessoa_r",
                               "pessoajuridica_r", "categoria_r", "filial_r"};
  for (const char* view : views) {
    EXPECT_EQ(database_.rows(concat("select nome from ", view, " where oid = 100001")), "Matriz") << view;
  }
  EXPECT_EQ(database_.rows("select rutilizado from utilizacao_r where runidade = 6"), "100001");
  exclude(100001);
  exclude(100001);
  for (const char* view : views) {
    EXPECT_EQ(database_.rows(concat("select nome from ", view, " where oid = 100001")), "") << view;
  }
  EXPECT_EQ(database_.rows("select rutilizado from utilizacao_r where runidade = 6"), "");
}

TEST_F(Views, HoldASalespersonOnceForAllHisLiveAccounts) {
  for (std::int32_t oid = 100001; oid <= 100008; ++oid) item(oid, concat("p", oid - 100000).c_str());
  relate(100101, 100001, 100002);
  relate(100102, 100001, 100003);  // a second account
  relate(100103, 100001, 100003);  // ... registered twice
  relate(100104, 100004, 100005);
  relate(100105, 100006, 100007, 1122);  // some other relation
  EXPECT_EQ(database_.rows("select oid, nome from vendedor_r order by oid"), "100001|p1\n100004|p4");

  exclude(100002);
  exclude(100005);
  EXPECT_EQ(database_.rows("select oid, nome from vendedor_r order by oid"), "100001|p1");
  exclude(100001);
  EXPECT_EQ(database_.rows("select oid from vendedor_r"), "");
}

TEST_F(Views, CompareUpperCaseOfAccentedLetters) {
  item(100001, "Padaria São João", 46);
  database_.run("insert into pessoajuridica (oid) values (100001)");
  EXPECT_EQ(database_.rows("select oid from PessoaJuridica_r where UPPER(nome)=UPPER('padaria SÃO joÃo')"),
            "100001");
  EXPECT_EQ(database_.rows("select oid from PessoaJuridica_r where UPPER(nome)=UPPER('padaria sao joao')"),
            "");
}

TEST_F(Views, FixedRowsNameTheCurrentCompanyAndLetNobodyIn) {
  EXPECT_EQ(
      database_.rows("SELECT ITEM.RESCOPO FROM UTILIZACAO_R,ITEM WHERE RUTILIZADO = ITEM.OID AND RITEM = 1 "
                     "AND RUNIDADE = 10449"),
      "50000");
  EXPECT_EQ(database_.rows("select oid, senha from usuario where oid <> 26737 order by oid"),
            "1|null\n7|null");
  EXPECT_EQ(database_.rows("select codvend, rpessoa from vendedocad v, usuario u where v.senhaven = u.senha"),
            "0|7");
  EXPECT_EQ(database_.rows("select count(*) from item where oid > 100000"), "0");
  EXPECT_EQ(database_.rows("select count(*) from item where rescopo = oid"), "0");
}

}  // namespace
}  // namespace pradelis::tests
