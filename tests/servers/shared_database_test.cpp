#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "component/crm.h"
#include "dataaccess/pool.h"
#include "dataaccess/quelcor.h"
#include "tests/support/control_server.h"
#include "tests/support/database.h"
#include "tests/support/engine.h"
#include "tests/support/web_host.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

// The component on a server that many processes share, and that can go away.
namespace pradelis::tests {
namespace {

using component::CRM;
using component::CRMPtr;

/// What one process did: how many calls succeeded, were refused, or failed otherwise.
struct Outcome {
  int registered = 0;
  int refused = 0;
  int failed = 0;
};

/// Registers deals and products under names that the other process uses too.
Outcome register_together(const std::string& connection_string, int count) {
  Outcome outcome;
  WebHost host(connection_string);
  const CRMPtr crm = std::make_shared<CRM>();
  const auto note = [&outcome](const auto& call) {
    try {
      const Variant result = call();
      ++(result.is(VariantType::Text) ? outcome.refused : outcome.registered);
    } catch (const Error& error) {
      ++(error.number() == error_number::constraint_refused ? outcome.refused : outcome.failed);
    }
  };
  for (int i = 0; i < count; ++i) {
    const std::string name = concat("nome ", i);
    std::int16_t step = 0;
    note([&] { return crm->Cadastrar_Negocio(501, 0, 601, "10/04/2026", "4,5", 0, "", name, 10, step); });
    note([&] { return crm->Cadastrar_Produto(name); });
  }
  return outcome;
}

/// Runs `work` in a process of its own; gives its exit code when it is waited for.
template <class Work>
pid_t in_another_process(Work work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  return child;
}

int exit_code_of(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class SharedDatabase : public ::testing::Test {
 protected:
  static int number(TemporaryDatabase& database, const std::string& sql) {
    return to_int32(database.value(sql));
  }
};

TEST_F(SharedDatabase, TwoProcessesRegisterAtOnce) {
  constexpr int count = 40;
  TemporaryDatabase database;
  dataaccess::close_idle_connections();
  std::vector<pid_t> children;
  for (int process = 0; process < 2; ++process) {
    children.push_back(in_another_process([&database] {
      const Outcome outcome = register_together(database.connection_string(), count);
      const bool all = outcome.registered + outcome.refused == 2 * count;
      return all && outcome.failed == 0 ? 0 : 1;
    }));
  }
  for (const pid_t child : children) EXPECT_EQ(exit_code_of(child), 0);
  // Each name is registered at least once, and no identifier twice: they are the tables' keys.
  EXPECT_EQ(
      number(database, "select count(distinct i.nome) from item i, crm_pos_negocio n where i.oid = n.oid"),
      count);
  EXPECT_EQ(number(database, "select count(distinct nome) from crm_produtos"), count);
  const int deals = number(database, "select count(*) from crm_pos_negocio");
  EXPECT_EQ(number(database, "select count(*) from crm_classeprodutos_negocio"), 2 * deals);
  // What the first processes left is a duplicate for the next.
  const Outcome later = register_together(database.connection_string(), count);
  EXPECT_EQ(later.refused, 2 * count);
}

TEST_F(SharedDatabase, SixteenThreadsWorkAtOnce) {
  TemporaryDatabase database;
  std::atomic<int> failures = 0;
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 16; ++thread) {
    threads.emplace_back([&database, &failures, thread] {
      try {
        WebHost host(database.connection_string());
        for (int request = 0; request < 10; ++request) {
          const CRMPtr crm = std::make_shared<CRM>();
          std::int16_t step = 0;
          const std::string name = concat("negócio ", thread, " ", request);
          const Variant oid = crm->Cadastrar_Negocio(501, 0, 601, "", "7", 0, "", name, 5, step);
          if (crm->Negocio_Status(to_int32(oid)) != "Aberto") ++failures;
          crm->Fechar_Negocio("10/04/2026", oid);
          crm->Executar(concat("select nome from item_r where oid = ", oid));
          if (to_text(crm->rs->value("NOME")) != name) ++failures;
        }
      } catch (const Error& error) {
        ADD_FAILURE() << error.description();
      }
    });
  }
  threads.clear();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(number(database, "select count(*) from crm_pos_negocio where fechamento is not null"), 160);
}

class ServerThatGoesAway : public SharedDatabase {
 protected:
  void SetUp() override {
    if (!on_postgresql()) GTEST_SKIP() << "the embedded database goes away with the process only";
  }
};

TEST_F(ServerThatGoesAway, ARestartBetweenTwoCallsIsNotNoticed) {
  TemporaryDatabase database;
  WebHost host(database.connection_string());
  std::int16_t step = 0;
  {
    const CRMPtr crm = std::make_shared<CRM>();
    EXPECT_FALSE(crm->Cadastrar_Negocio(501, 0, 601, "", "", 0, "", "antes", 5, step).is(VariantType::Text));
  }
  control_server("restart -m fast");
  const CRMPtr crm = std::make_shared<CRM>();
  EXPECT_FALSE(crm->Cadastrar_Negocio(501, 0, 601, "", "", 0, "", "depois", 5, step).is(VariantType::Text));
  SideConnection side(database.connection_string());
  EXPECT_EQ(side.rows("select nome from item where cid = 16075 order by nome"), "antes\ndepois");
}

TEST_F(ServerThatGoesAway, ARestartDuringACallFailsItAndTheNextOneWorks) {
  TemporaryDatabase database;
  WebHost host(database.connection_string());
  const CRMPtr crm = std::make_shared<CRM>();
  std::jthread restart([] {
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    control_server("restart -m fast");
  });
  try {
    crm->Executar("select pg_sleep(30)");
    ADD_FAILURE();
  } catch (const Error& error) {
    EXPECT_EQ(error.number(), error_number::database_failed) << error.description();
    EXPECT_EQ(error.source(), "Pradelis.CRM.Executar");
  }
  restart.join();
  const CRMPtr next = std::make_shared<CRM>();
  next->Executar("select 5 as n");
  EXPECT_EQ(to_text(next->rs->value("n")), "5");
}

TEST_F(ServerThatGoesAway, AConnectionThatTheAdministratorEndsIsReplaced) {
  TemporaryDatabase database;
  WebHost host(database.connection_string());
  std::string process;
  {
    const CRMPtr crm = std::make_shared<CRM>();
    crm->Executar("select pg_backend_pid() as p");
    process = to_text(crm->rs->value("p"));
  }
  database.value(concat("select pg_terminate_backend(", process, ")"));
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  const CRMPtr crm = std::make_shared<CRM>();
  crm->Executar("select pg_backend_pid() as p");
  EXPECT_NE(to_text(crm->rs->value("p")), process);
}

TEST_F(ServerThatGoesAway, ThePoolReplacesConnectionsThatDied) {
  TemporaryDatabase database;
  const auto open = [&database] {
    const dataaccess::ConnectionPtr connection = dataaccess::new_connection();
    connection->set_ConnectionString(database.connection_string());
    connection->set_Mode(dataaccess::ConnectMode::Read);
    connection->Open();
    return connection;
  };
  open()->Close();
  control_server("restart -m fast");
  const dataaccess::ConnectionPtr connection = open();
  EXPECT_EQ(to_text(connection->Execute("select 5 as n")->value("n")), "5");
}

TEST_F(ServerThatGoesAway, ATimeOutFiresAndTheConnectionGoesOn) {
  TemporaryDatabase database;
  WebHost host(database.connection_string());
  host.set_application("dataconn_CommandTimeout", "1");
  const CRMPtr crm = std::make_shared<CRM>();
  try {
    crm->Executar("select pg_sleep(20)");
    ADD_FAILURE();
  } catch (const Error& error) {
    EXPECT_EQ(error.number(), error_number::timed_out) << error.description();
  }
  crm->Executar("select 5 as n");
  EXPECT_EQ(to_text(crm->rs->value("n")), "5");
}

}  // namespace
}  // namespace pradelis::tests
