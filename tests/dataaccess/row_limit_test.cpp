#include "dataaccess/row_limit.h"

#include <gtest/gtest.h>

namespace pradelis::tests {
namespace {

using namespace pradelis::dataaccess;

TEST(RowLimit, StandsAtTheEndInTheEnginesWords) {
  const char* const query = "select a from t where b in (select c from u limit 5) union select 1 order by 1";
  EXPECT_EQ(with_row_limit(query, postgresql_dialect), std::string(query) + "\nlimit ?");
  EXPECT_EQ(with_row_limit(query, oracle_dialect), std::string(query) + "\nfetch first ? rows only");
  EXPECT_EQ(with_row_limit(query, sqlite_dialect), "");
  EXPECT_EQ(with_row_limit(query, sql_server_dialect), "");
}

TEST(RowLimit, IsLeftOutWhereItCouldChangeTheStatement) {
  for (const char* sql : {"update t set a = 1 returning a", "with x as (select 1) select * from x",
                          "(select 1)", "select a from t limit 5", "select a from t fetch first 5 rows only",
                          "select a from t FOR update", "select a into u from t", "select a from t; select 1",
                          "select a from t where b = 'x", "select a from t /* x", "select (a from t", ""}) {
    EXPECT_EQ(with_row_limit(sql, postgresql_dialect), "") << sql;
  }
}

}  // namespace
}  // namespace pradelis::tests
