#include "dataaccess/row_limit.h"

#include <gtest/gtest.h>

namespace pradelis::tests {
namespace {

using namespace pradelis::dataaccess;

std::string limited(const char* sql, const Dialect& dialect) { return with_row_limit(sql, dialect).text; }

TEST(RowLimit, StandsAtTheEndOrAfterSelectInTheEnginesWords) {
  const char* const union_query =
      "select a from t where b in (select c from u limit 5) union select 1 order by 1";
  EXPECT_EQ(limited(union_query, postgresql_dialect), std::string(union_query) + "\nlimit ?");
  EXPECT_EQ(limited(union_query, oracle_dialect), "") << "it would refuse two columns of one name";
  EXPECT_EQ(limited(union_query, sql_server_dialect), "") << "it would count for the first query only";
  EXPECT_EQ(limited(union_query, sqlite_dialect), "");

  EXPECT_EQ(limited("select a from t order by a", sql_server_dialect), "select top (?) a from t order by a");
  EXPECT_EQ(limited(" SELECT Distinct a from t", sql_server_dialect), " SELECT Distinct top (?) a from t");
  EXPECT_EQ(limited("select (select max(a) from u union select 1) from t", sql_server_dialect),
            "select top (?) (select max(a) from u union select 1) from t");
  EXPECT_TRUE(with_row_limit("select a from t where b = ?", sql_server_dialect).limit_first);
  EXPECT_FALSE(with_row_limit("select a from t where b = ?", postgresql_dialect).limit_first);
}

TEST(RowLimit, IsLeftOutWhereItCouldChangeTheStatement) {
  for (const char* sql : {"update t set a = 1 returning a", "with x as (select 1) select * from x",
                          "(select 1)", "select a from t limit 5", "select a from t fetch first 5 rows only",
                          "select a from t FOR update", "select a into u from t", "select a from t; select 1",
                          "select a from t where b = 'x", "select a from t /* x", "select (a from t",
                          "select top 5 a from t", "select distinct top 5 a from t", ""}) {
    EXPECT_EQ(limited(sql, postgresql_dialect), "") << sql;
    EXPECT_EQ(limited(sql, sql_server_dialect), "") << sql;
  }
}

}  // namespace
}  // namespace pradelis::tests
