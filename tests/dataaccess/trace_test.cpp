#include "dataaccess/trace.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <vector>

#include "tests/dataaccess/database_fixture.h"
#include "values/date.h"

namespace pradelis::tests {
namespace {

class Trace : public Database {
 protected:
  Trace() { set_trace_file(path); }
  ~Trace() override { set_trace_file(""); }

  /// The lines' rows and texts, after a check of their form.
  std::vector<std::string> lines() const {
    static const std::regex form(R"((\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3})\t(\d+\.\d{3})\t(\d*)\t([^\t]*))");
    std::vector<std::string> all;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
      std::smatch fields;
      EXPECT_TRUE(std::regex_match(line, fields, form)) << line;
      all.push_back(fields[3].str() + " " + fields[4].str());
    }
    return all;
  }

  std::string path = folder.file("trace.txt");
};

TEST_F(Trace, WritesEveryStatementThatGoesToTheDatabase) {
  execute("create table t (oid integer primary key, nome text, quando datetime, dado blob)");
  execute("insert into t (oid, nome) values (1, 'it''s'), (2, 'x\ty\nz')");
  rows("select nome\nfrom t where UPPER(nome) <> 'a'\tand oid in (1,2,3)");
  stream("select nome from t where oid in (2)");
  const auto rs = updatable("select * from t where oid = 1");
  EXPECT_EQ(lines().size(), 4U) << "an updatable recordset runs nothing when it is opened";
  rs->set("nome", "it's");
  rs->set("quando", make_date({.year = 2026, .month = 3, .day = 5}));
  rs->Update();
  rs->Delete();
  rs->AddNew();
  rs->set("oid", std::int32_t{9});
  rs->set("dado", Bytes(40, std::byte{0xAB}));
  rs->Update();
  EXPECT_THROW(snapshot("select nada from t"), Error);
  set_trace_file("");
  rows("select 1");

  const std::vector<std::string> expected = {
      "0 create table t (oid integer primary key, nome text, quando datetime, dado blob)",
      "2 insert into t (oid, nome) values (1, 'it''s'), (2, 'x\\ty\\nz')",
      "2 select nome\\nfrom t where UPPER(nome) <> 'a'\\tand oid in (1,2,3)",
      " select nome from t where oid in (2)",
      "1 select * from t where oid = 1",
      "1 update t set nome = 'it''s', quando = '2026-03-05 00:00:00' where oid = 1 and nome = 'it''s' and quando is null",
      "1 delete from t where oid = 1",
      "1 insert into t (oid, dado) values (9, x'" + std::string(64, ' ') + "' /* … 40 bytes */)",
      " select nada from t",
  };
  auto actual = lines();
  ASSERT_EQ(actual.size(), expected.size());
  for (std::size_t i = 0; i < actual.size(); ++i) {
    std::string wanted = expected[i];
    for (std::size_t at = wanted.find("  "); at != std::string::npos; at = wanted.find("  "))
      wanted.replace(at, 2, "ab");
    EXPECT_EQ(actual[i], wanted);
  }
}

TEST_F(Trace, GoesOnAtTheEndOfItsFile) {
  rows("select 1");
  set_trace_file(path);
  rows("select 2");
  EXPECT_EQ(lines(), (std::vector<std::string>{"1 select 1", "1 select 2"}));
  EXPECT_TRUE(raises(error_number::database_failed, "/nada/", [] { set_trace_file("/nada/trace.txt"); }));
  rows("select 3");
}

}  // namespace
}  // namespace pradelis::tests
