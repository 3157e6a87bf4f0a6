#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "dataaccess/schema/description.h"
#include "dataaccess/schema/schema.h"
#include "tests/support/database.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

namespace schema = dataaccess::schema;
using Kind = schema::InitOutcome::Kind;

class Initialise : public ::testing::Test {
 protected:
  schema::InitOptions options() {
    schema::InitOptions result;
    result.maintenance_password = [this] {
      ++asked_;
      return password_;
    };
    result.password_rounds = 1;
    return result;
  }

  schema::InitOutcome initialise() { return schema::initialise(connection_string_, options()); }

  std::int32_t number_of_failure() {
    try {
      initialise();
      return 0;
    } catch (const Error& error) {
      return error.number();
    }
  }

  SideConnection side(const char* settings = "&create=1") {
    return SideConnection(connection_string_ + settings);
  }

  TemporaryFolder folder_;
  std::string connection_string_ = "sqlite:" + (folder_.path() / "novo.db").string() + "?synchronous=off";
  std::string password_ = "segredo";
  int asked_ = 0;
};

TEST_F(Initialise, CreatesOnceAndThenHasNothingToDo) {
  const schema::InitOutcome first = initialise();
  EXPECT_EQ(first.kind, Kind::Created);
  EXPECT_EQ(first.from_version, 0);
  EXPECT_EQ(first.version, schema::current_version);
  const std::string before = side().rows("select * from instalacao") + side().rows("select * from item");

  const schema::InitOutcome second = initialise();
  EXPECT_EQ(second.kind, Kind::UpToDate);
  EXPECT_EQ(second.from_version, schema::current_version);
  EXPECT_EQ(asked_, 1);
  EXPECT_EQ(side().rows("select * from instalacao") + side().rows("select * from item"), before);
}

TEST_F(Initialise, MakesEveryTableViewColumnAndIndexOfTheDescription) {
  initialise();
  SideConnection database = side();
  for (const schema::Table& table : schema::tables()) {
    for (const schema::Column& column : table.columns) {
      EXPECT_NO_THROW(database.rows(concat("select ", column.name, " from ", table.name, " where 1 = 0")));
    }
    for (const schema::Index& index : table.indexes) {
      EXPECT_EQ(
          database.rows(concat("select count(*) from sqlite_master where type = 'index' and tbl_name = '",
                               table.name, "' and name = '", index.name, "'")),
          "1");
    }
  }
  for (const schema::View& view : schema::views()) {
    EXPECT_NO_THROW(database.rows(concat("select * from ", view.name))) << view.name;
  }
}

TEST_F(Initialise, GivesEachInstallationItsOwnSalt) {
  initialise();
  const std::string salt = side().rows("select sal from instalacao");
  EXPECT_EQ(salt.size(), 64U);
  connection_string_ = "sqlite:" + (folder_.path() / "outro.db").string() + "?synchronous=off";
  initialise();
  EXPECT_NE(side().rows("select sal from instalacao"), salt);
}

TEST_F(Initialise, RefusesAnEmptyPasswordAndWritesNothing) {
  password_.clear();
  EXPECT_EQ(number_of_failure(), error_number::invalid_argument);
  EXPECT_EQ(side().rows("select name from sqlite_master"), "");
  EXPECT_THROW(schema::initialise(connection_string_, schema::InitOptions()), Error);
}

TEST_F(Initialise, RefusesAForeignDatabaseAndLeavesItAsItIs) {
  for (const char* foreign :
       {"create table Item (oid int, preco double)", "create view VENDEDOR_R as select 1 oid",
        "create table vendedor_r (oid int)"}) {
    const std::string file = (folder_.path() / concat("alheio", foreign[7], asked_++)).string();
    connection_string_ = "sqlite:" + file + "?synchronous=off";
    side().run(foreign);
    const std::string before = side().rows("select sql from sqlite_master");
    EXPECT_EQ(number_of_failure(), error_number::database_failed) << foreign;
    EXPECT_EQ(side().rows("select sql from sqlite_master"), before);
  }
}

TEST_F(Initialise, RefusesADatabaseOfANewerVersion) {
  initialise();
  side().run(concat("update instalacao set versao = ", schema::current_version + 1));
  EXPECT_EQ(number_of_failure(), error_number::database_failed);
  EXPECT_EQ(side().rows("select versao from instalacao"), to_text(schema::current_version + 1));
}

TEST_F(Initialise, AddsWhatAnOlderDatabaseLacksAndKeepsItsData) {
  initialise();
  SideConnection database = side();
  database.run("insert into item (oid, nome, cid, rescopo) values (100001, 'guardado', 46, 7)");
  database.run("update item set nome = 'Clientes A' where oid = 2121");
  const std::string passwords =
      database.rows("select sal, senha, senhaven from instalacao, usuario, vendedocad");
  database.run("drop view item_r");
  database.run("drop view pessoa_r");
  database.run("create view pessoa_r as select oid from pessoa");
  database.run("drop view pessoajuridica_r");
  database.run("alter table item drop column responsavel");
  database.run("drop index item_rescopo");
  database.run("drop table listadeobjetos");
  database.run("delete from item where oid = 1121");
  database.run("update instalacao set versao = 0, proximooid = 100051");

  EXPECT_EQ(initialise().version, schema::current_version);

  EXPECT_EQ(database.rows("select nome, responsavel from item_r where oid = 100001"), "guardado|null");
  EXPECT_EQ(database.rows("select nome from item where oid in (1121, 2121) order by oid"),
            "Conta de usuário da pessoa\nClientes A");
  EXPECT_EQ(database.rows("select nome, razaosocial from pessoa_r where oid = 50000"),
            "Empresa corrente|Empresa corrente");
  EXPECT_EQ(
      database.rows("select count(*) from sqlite_master where name in ('item_rescopo','listadeobjetos')"),
      "2");
  EXPECT_EQ(database.rows("select versao, proximooid from instalacao"),
            concat(schema::current_version, "|100051"));
  EXPECT_EQ(database.rows("select sal, senha, senhaven from instalacao, usuario, vendedocad"), passwords);
}

TEST_F(Initialise, TakesEverythingBackWhenItFails) {
  initialise();
  SideConnection database = side();
  database.run("drop table listadeobjetos");
  database.run("drop view vendedor_r");
  // A fixed row that is missing, and that its table does not take.
  database.run("delete from categoria where oid = 2127");
  database.run("create trigger recusa before insert on categoria begin select raise(abort, 'não'); end");
  database.run("update instalacao set versao = 0");
  const std::string before = database.rows("select sql from sqlite_master");

  EXPECT_EQ(number_of_failure(), error_number::constraint_refused);
  EXPECT_EQ(database.rows("select sql from sqlite_master"), before);
  EXPECT_EQ(database.rows("select versao from instalacao"), "0");

  database.run("drop trigger recusa");
  EXPECT_EQ(initialise().version, schema::current_version);
}

TEST_F(Initialise, RunsSafelyInSeveralProcessesAtOnce) {
  std::vector<Kind> kinds(4);
  {
    std::vector<std::jthread> threads;
    for (Kind& kind : kinds) {
      threads.emplace_back([this, &kind] {
        schema::InitOptions options;
        options.maintenance_password = [] { return std::string("segredo"); };
        options.password_rounds = 1;
        kind = schema::initialise(connection_string_, options).kind;
      });
    }
  }
  EXPECT_EQ(std::count(kinds.begin(), kinds.end(), Kind::Created), 1);
  EXPECT_EQ(std::count(kinds.begin(), kinds.end(), Kind::UpToDate), 3);
  EXPECT_EQ(side().rows("select count(*) from usuario where oid = 26737"), "1");
}

TEST(SchemaDocument, NamesEveryTableViewAndColumn) {
  std::ifstream stream(PRADELIS_SCHEMA_DOCUMENT);
  std::stringstream content;
  content << stream.rdbuf();
  const std::string document = content.str();
  for (const schema::Table& table : schema::tables()) {
    const std::size_t begin = document.find(concat("`", table.name, "`"));
    EXPECT_NE(begin, std::string::npos) << table.name;
    for (const schema::Column& column : table.columns) {
      EXPECT_NE(document.find(concat("`", column.name, "`"), begin), std::string::npos)
          << table.name << "." << column.name;
    }
  }
  for (const schema::View& view : schema::views()) {
    EXPECT_NE(document.find(concat("`", view.name, "`")), std::string::npos) << view.name;
  }
}

}  // namespace
}  // namespace pradelis::tests
