#include <gtest/gtest.h>

#include "database.h"

/// `pradelis init` and `demo` on the engine under test, as whoever installs the system runs them.
namespace pradelis::command {
namespace {

TEST(Demo, FillsEveryAreaOfANewDatabaseOnce) {
  const Demonstration demonstration;
  for (const char* login : {"HELENA", "ANA", "VINICIUS"}) {
    EXPECT_NE(demonstration.logins().find(std::string("  ") + login + " "), std::string::npos);
  }
  EXPECT_EQ(demonstration.password().size(), 10U) << demonstration.logins();

  const char* const present[] = {
      "select count(*) from crm_pos_negocio where fechamento is null",
      "select count(*) from crm_pos_negocio where fechamento is not null and rmotivo is null",
      "select count(*) from crm_pos_negocio where rmotivo is not null",
      "select count(*) from crm_pos_negocio where rproduto is not null",
      "select count(*) from crm_classeprodutos_negocio",
      "select count(*) from crm_atividade where proximocontato is not null",
      "select count(*) from crm_produtos",
      "select count(*) from crm_arquivo where dado is not null",
      "select count(*) from dadoadicional where oid > 100000",
      "select count(*) from aditivo",
      "select count(*) from filial",
      "select count(*) from cidade",
      "select count(*) from excluido",
      "select count(*) from agrupamento where rpapel = 26735",
      "select count(*) from classificacao where rcategoria = 2121",
      "select count(*) from classificacao where rcategoria = 2127",
      "select count(*) from categoria_r where rsuper > 100000",
      "select count(*) from categoria_r where rsuper = 2201",
      "select count(*) from categoria_r where rsuper = 2205",
  };
  for (const char* query : present) EXPECT_GT(std::stoi(demonstration.value(query)), 0) << query;
  EXPECT_EQ(demonstration.value("select count(*) from vendedor_r"), "12");
  EXPECT_EQ(demonstration.value("select count(*) from crm_pos_negocio"), "60");

  const Process::Outcome again = run({"demo", "--database", demonstration.url()});
  EXPECT_EQ(again.status, 1);
  EXPECT_NE(again.complaint.find("o banco já tem registros"), std::string::npos) << again.complaint;
  EXPECT_EQ(demonstration.value("select count(*) from crm_pos_negocio"), "60");
}

TEST(Demo, RefusesADatabaseThatIsNotInitialised) {
  const Database database;
  const Process::Outcome outcome = run({"demo", "--database", database.url()});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.complaint, "");
  EXPECT_EQ(outcome.output, "");
}

TEST(Installing, CreatesOnceAndAnswersScripts) {
  const Database database;
  const Process::Outcome first = database.init();
  EXPECT_EQ(first.status, 0) << first.complaint;
  EXPECT_EQ(first.output.substr(0, 23), "Banco de dados criado n");
  const Process::Outcome second = run({"init", "--database", database.url()});  // needs no password now
  EXPECT_EQ(second.output.substr(0, 13), "Nada a fazer:") << second.complaint;
  EXPECT_EQ(database.value("select nome from item_r where oid = 50000"), "Empresa corrente");
}

}  // namespace
}  // namespace pradelis::command
