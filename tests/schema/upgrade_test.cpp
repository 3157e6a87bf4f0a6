#include <gtest/gtest.h>

#include "dataaccess/schema/description.h"
#include "dataaccess/schema/schema.h"
#include "tests/support/database.h"

namespace pradelis::tests {
namespace {

namespace schema = dataaccess::schema;

// Databases of version 2 had no sessions of the site and did not count changes of groups.
TEST(Upgrade, AddsTheSessionsOfTheSiteAndKeepsWhatIsThere) {
  TemporaryDatabase database;
  database.run("drop table sessaodosite");
  database.run("alter table instalacao drop column equipe");
  database.run("insert into item (oid, nome, cid, rescopo) values (100001, 'guardado', 46, 7)");
  database.run("update instalacao set versao = 2, proximooid = 100051");
  const std::string passwords =
      database.rows("select sal, senha, senhaven from instalacao, usuario, vendedocad");

  const schema::InitOutcome outcome = schema::initialise(database.connection_string(), {});
  EXPECT_EQ(outcome.kind, schema::InitOutcome::Kind::Upgraded);
  EXPECT_EQ(outcome.from_version, 2);
  EXPECT_EQ(outcome.version, schema::current_version);

  EXPECT_EQ(database.rows("select nome from item_r where oid = 100001"), "guardado");
  EXPECT_EQ(database.rows("select proximooid, equipe from instalacao"), "100051|null");
  EXPECT_EQ(database.rows("select sal, senha, senhaven from instalacao, usuario, vendedocad"), passwords);
  const std::string row = "insert into sessaodosite (chave, rpessoa, usada) values ('a', 7, 1)";
  EXPECT_EQ(database.run(row), 1);
  EXPECT_THROW(database.run(row), std::exception);
}

}  // namespace
}  // namespace pradelis::tests
