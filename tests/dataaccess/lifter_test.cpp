#include "dataaccess/lifter.h"

#include <gtest/gtest.h>

#include "tests/support/raises.h"

namespace pradelis::tests {
namespace {

using namespace pradelis::dataaccess;

std::string shown(std::span<const Cell> values) {
  std::string text;
  for (const Cell& value : values) {
    switch (value.kind) {
      case CellKind::Integer:
        text += "i" + std::to_string(value.integer);
        break;
      case CellKind::Decimal:
        text.append("d").append(value.text());
        break;
      case CellKind::Text:
        text.append("t").append(value.text());
        break;
      default:
        text += "?";
    }
    text += '|';
  }
  return text;
}

struct Case {
  const char* sql;
  const char* text;    // nullptr: stays as it is
  const char* values;  // kind and value, each with "|" after it
};

TEST(Lifter, TakesLiteralsOutOfConditionsAndRows) {
  const Case cases[] = {
      {"select * from t where a=5 and b='x'", "select * from t where a=? and b=?", "i5|tx|"},
      {"select * from t where n='it''s' or n='a''''b'", "select * from t where n=? or n=?", "tit's|ta''b|"},
      {"SELECT a FROM t WHERE n LIKE 'x%' AND v BETWEEN 1 AND 2.50",
       "SELECT a FROM t WHERE n LIKE ? AND v BETWEEN ? AND ?", "tx%|i1|d2.50|"},
      {"insert into t (a,b) values (1, 'x')", "insert into t (a,b) values (?, ?)", "i1|tx|"},
      {"update t set a = 5, b='y' where oid = 3", "update t set a = ?, b=? where oid = ?", "i5|ty|i3|"},
      {"delete from t where oid =7", "delete from t where oid =?", "i7|"},
      {"select a from t where UPPER(n)=UPPER('é')", "select a from t where UPPER(n)=UPPER(?)", "té|"},
      {"select a from t where x in (select y from u where z=1)",
       "select a from t where x in (select y from u where z=?)", "i1|"},
      {"(select a from t where b=1) union all (select 2 from t where b=2)",
       "(select a from t where b=?) union all (select 2 from t where b=?)", "i1|i2|"},
      {"with c(n) as (select 1 union all select n+1 from c where n<9) select n from c where n>3",
       "with c(n) as (select 1 union all select n+1 from c where n<?) select n from c where n>?", "i9|i3|"},
      {"select a from t where a=9223372036854775807", "select a from t where a=?", "i9223372036854775807|"},
      {"select a from t where case when b=1 then 'x' else 'y' end='x'",
       "select a from t where case when b=? then ? else ? end=?", "i1|tx|ty|tx|"},
      {"select a from t group by a having count(*) > 2", "select a from t group by a having count(*) > ?",
       "i2|"},
      {"select a from t where b=/* five: ' */5 -- it's", "select a from t where b=/* five: ' */? -- it's",
       "i5|"},
  };
  Lifter lifter;
  for (const Case& one : cases) {
    lifter.lift(one.sql, sqlite_dialect);
    EXPECT_EQ(lifter.text().text, one.text);
    EXPECT_EQ(shown(lifter.values()), one.values) << one.sql;
  }
}

TEST(Lifter, TakesASignBeforeANumberWhereItIsNoMinus) {
  const Case cases[] = {
      {"select a from t where a=-5", "select a from t where a=?", "i-5|"},
      {"select a from t where a in (-1,+2)", "select a from t where a in (?,?)", "i-1|i2|"},
      {"select a from t where a between -1 and -.5", "select a from t where a between ? and ?", "i-1|d-.5|"},
      {"select a from t where a=b-5", "select a from t where a=b-?", "i5|"},
      {"select a from t where a=(b)-5", "select a from t where a=(b)-?", "i5|"},
      {"select a from t where a=b - -5", "select a from t where a=b - ?", "i-5|"},
      {"update t set a=-1.5e3", "update t set a=?", "d-1.5e3|"},
  };
  Lifter lifter;
  for (const Case& one : cases) {
    lifter.lift(one.sql, sqlite_dialect);
    EXPECT_EQ(lifter.text().text, one.text);
    EXPECT_EQ(shown(lifter.values()), one.values) << one.sql;
  }
}

TEST(Lifter, LeavesWhatAValueWouldChange) {
  const char* const statements[] = {
      "select 7 a, 'x' from t",
      "select (select nome from u where oid=5), case when a=1 then 'x' end from t",
      "select a from t where b in (select 5)",
      "select isnull(max(oid),0)+1 as oid from t",
      "select top 5 a from t",
      "select a is distinct from 5 from t",
      "select a from t order by 1, 2 desc limit 10 offset 5",
      "select a from t group by 1",
      "select a, count(*) from t group by substr(a,1,2)",
      "select a from t order by a fetch first 5 rows only",
      "select a from t where cast(b as varchar(30))=c and d=cast(e as char(5)) and f::numeric(10,2)=g",
      "select a from t where convert(char(10), b, c)=d",
      "select a from t where a=N'x' or b=x'00ff' or c=E'it\\'s' or d=U&'x'",
      "select a from t where a=date '2026-01-02' and b=timestamp '2026-01-02 10:00:00' and c>interval '1 day'",
      "select a from t where a like b escape '\\'",
      "select a from t where 1=1",
      "select a from t where 5*2=a and 'a'||'b'=c and a=1 - -2",
      "select a from t where a='x'\n'y'",
      "select a from t where a=99999999999999999999 or a=0x1F or a=12ab",
      "select a from t where \"5\"=[6] and `7`=a8",
      "select a from t where a=5 and b='unended",
      "select a from t where a=5 /* unended",
      "insert into t (a) select 5",
      "insert into t (a) values (b) returning 5",
      "with x(a) as (values (1)) select a from x",
      "create table t (a varchar(30) default 'x', check (a>5))",
      "alter table t add b numeric(10,2) default 5",
      "drop table t5",
      "pragma busy_timeout=5",
      "set language 'portuguese'",
      "select a from t where a=(5",
      "",
  };
  Lifter lifter;
  for (const char* sql : statements) {
    lifter.lift(sql, sqlite_dialect);
    EXPECT_EQ(lifter.text().text, sql);
    EXPECT_TRUE(lifter.values().empty()) << sql;
  }
}

TEST(Lifter, PadsListsOfLiterals) {
  const Case cases[] = {
      {"select a from t where b in (1)", "select a from t where b in (?)", "i1|"},
      {"select a from t where b in (1, 2, 3)", "select a from t where b in (?, ?, ?,?)", "i1|i2|i3|i3|"},
      {"select a from t where b not in ('x','y','z') and c=1",
       "select a from t where b not in (?,?,?,?) and c=?", "tx|ty|tz|tz|i1|"},
      {"select a from t where b IN( 5,4,3,2,1 )or c=2", "select a from t where b IN( ?,?,?,?,? ,?,?,?)or c=?",
       "i5|i4|i3|i2|i1|i1|i1|i1|i2|"},
      {"select a from t where b in (1,c,3)", "select a from t where b in (?,c,?)", "i1|i3|"},
      {"select a from t where b in (1,2+3,4)", "select a from t where b in (?,2+3,?)", "i1|i4|"},
      {"select a from t where b in (1,(2),4)", "select a from t where b in (?,(?),?)", "i1|i2|i4|"},
  };
  Lifter lifter;
  for (const Case& one : cases) {
    lifter.lift(one.sql, sqlite_dialect);
    EXPECT_EQ(lifter.text().text, one.text);
    EXPECT_EQ(shown(lifter.values()), one.values) << one.sql;
  }
}

TEST(Lifter, LeavesListsAndStatementsOfTooManyValues) {
  const auto statement = [](int count) {
    std::string list = "1";
    for (int i = 2; i <= count; ++i) list += "," + std::to_string(i);
    return "select a from t where b in (" + list + ") and c=";
  };
  Lifter lifter;
  for (const auto& [count, values] :
       {std::pair(1025, 2049), std::pair(2049, 4097), std::pair(28672, 28673)}) {
    const std::string sql = statement(count) + "5";
    lifter.lift(sql, sqlite_dialect);
    EXPECT_EQ(lifter.values().size(), static_cast<std::size_t>(values));
  }
  const std::string sql = statement(28673);
  const std::string whole = sql + "5";
  lifter.lift(whole, sqlite_dialect);
  EXPECT_EQ(lifter.text().text, sql + "?");
  EXPECT_EQ(shown(lifter.values()), "i5|");

  std::string rows = "insert into t values (1)";
  for (int i = 0; i < 32000; ++i) rows += ",(1)";
  lifter.lift(rows, sqlite_dialect);
  EXPECT_EQ(lifter.text().text, rows);
  EXPECT_TRUE(lifter.values().empty());
}

TEST(Lifter, RefusesEmptyListsAndMarkers) {
  Lifter lifter;
  for (const char* sql : {"select a from t where b in ()", "select a from t where b not in ( /* none */ )",
                          "select case when a in () then 1 end from t", "select a from t where b = ?"}) {
    EXPECT_TRUE(raises(error_number::wrong_statement, [&] { lifter.lift(sql, sqlite_dialect); })) << sql;
  }
  lifter.lift("select now() from t where f()=g('?')", sqlite_dialect);
  EXPECT_EQ(shown(lifter.values()), "t?|");
}

TEST(Dialect, AsksUnionsForEachRow) {
  const struct {
    const char* sql;
    const char* expected;
  } cases[] = {
      {"select oid from t where a=? and oid in  (select b from u union select c from v) order by oid",
       "select oid from t where a=? and exists (select 1 from u where t.oid = u.b union all select 1 from v where "
       "t.oid = v.c) order by oid"},
      {"select x.a from dbo.t x where a IN (Select b From u Union Select c From v)",
       "select x.a from dbo.t x where exists (select 1 from u where x.a = u.b union all select 1 from v where x.a = "
       "v.c)"},
      {"select a from t where a in (select a from t union select c from v)", nullptr},
      {"select a from t where a not in (select b from u union select c from v)", nullptr},
      {"select a from t where not (b=1 and a in (select b from u union select c from v))", nullptr},
      {"select a from t, s where a in (select b from u union select c from v)", nullptr},
      {"select a from t where a in (select b from u where d=1 union select c from v)", nullptr},
      {"select a from t where a in (select b from u union all select c from v)", nullptr},
      {"update t set b=1 where a in (select b from u union select c from v)", nullptr},
      {"select a from t where b in (select d from w where a in (select b from u union select c from v))",
       nullptr},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(in_dialect(one.sql, sqlite_dialect), one.expected ? one.expected : one.sql);
  }
}

TEST(Dialect, RenamesFunctionsOutsideQuotedTexts) {
  const struct {
    const char* sql;
    const char* expected;
  } cases[] = {
      {"Select (isnull(max(oid),0) + 1) as OID from t", "Select (ifnull(max(oid),0) + 1) as OID from t"},
      {"select a from t where ISNULL (a, 'isnull(b,1)')='x'",
       "select a from t where ifnull (a, 'isnull(b,1)')='x'"},
      {"select a isnull, [isnull(x)] from t where b isnull", nullptr},
      {"select dbo.isnull(a,1) from t -- isnull(", nullptr},
      {"select upper(a) from t where UPPER(a)=upper('x') order by upper(a)",
       "select upper(a) from t where maiuscula(a)=maiuscula('x') order by upper(a)"},
      {"select (select b from u where upper(b)='X') from t where a in (select upper(b) from u where upper(b)='Y')",
       "select (select b from u where upper(b)='X') from t where a in (select upper(b) from u where maiuscula(b)='Y')"},
      {"select a from t where b='x' group by upper(a) having upper(a)>'m'",
       "select a from t where b='x' group by upper(a) having maiuscula(a)>'m'"},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(in_dialect(one.sql, sqlite_dialect), one.expected ? one.expected : one.sql);
  }
}

}  // namespace
}  // namespace pradelis::tests
