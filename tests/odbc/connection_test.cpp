#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "dataaccess/odbc/odbc_driver.h"
#include "tests/odbc/proxy.h"
#include "tests/odbc/servers.h"
#include "tests/support/control_server.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using dataaccess::Cell;
using dataaccess::ConnectMode;
using dataaccess::DriverConnection;
using Clock = std::chrono::steady_clock;

class OnPostgresql : public testing::Test {
 protected:
  void SetUp() override {
    if (!postgresql().missing.empty()) GTEST_SKIP() << postgresql().missing;
  }

  static std::unique_ptr<DriverConnection> open() { return connect(postgresql().connection_string); }
  static std::uint16_t port() {
    const std::string& text = postgresql().connection_string;
    return static_cast<std::uint16_t>(std::stoi(text.substr(text.find("Port=") + 5)));
  }
  /// The database with other connection keys before its own, which count.
  static std::string with(const std::string& keys) { return keys + postgresql().connection_string; }
  /// The number and text of the failure of an action, or 0 when it did not fail.
  template <class Action>
  static Error failure_of(Action action) {
    try {
      action();
    } catch (const Error& error) {
      return error;
    }
    return Error(0, "", "");
  }
};

TEST_F(OnPostgresql, AConnectionThatTheAdministratorEndedIsKnownToBeLost) {
  const auto victim = open();
  const std::string process = first_value(*victim, "select pg_backend_pid()");
  run(*open(), concat("select pg_terminate_backend(", process, ")"));
  const Error error = failure_of([&] { run(*victim, "select 1"); });
  EXPECT_EQ(error_number::database_failed, error.number()) << error.description();
  EXPECT_TRUE(victim->lost());
  EXPECT_FALSE(victim->alive());
}

TEST_F(OnPostgresql, ADeadConnectionIsFoundByAsking) {
  Proxy proxy(port());
  const auto connection = connect(with(concat("Port=", static_cast<int>(proxy.port()), ";")));
  EXPECT_TRUE(connection->alive());
  proxy.cut();
  EXPECT_FALSE(connection->alive());
  EXPECT_TRUE(connection->lost());
}

TEST_F(OnPostgresql, StatementsEndWhenTheirTimeIsOver) {
  const auto connection = open();
  const auto slow = connection->prepare("select pg_sleep(20)");
  const auto begin = Clock::now();
  const Error error = failure_of([&] { slow->run(1); });
  EXPECT_EQ(error_number::timed_out, error.number()) << error.description();
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(5));
  EXPECT_FALSE(connection->lost());
  EXPECT_EQ("1", first_value(*connection, "select 1"));
}

TEST_F(OnPostgresql, ConnectingEndsWhenItsTimeIsOver) {
  const SilentServer silent;
  const auto begin = Clock::now();
  const Error error = failure_of([&] {
    dataaccess::odbc::new_driver()->connect(
        {with(concat("Port=", static_cast<int>(silent.port()), ";")), ConnectMode::Unknown, 2, 30});
  });
  EXPECT_EQ(error_number::database_failed, error.number()) << error.description();
  EXPECT_LT(Clock::now() - begin, std::chrono::seconds(10));
}

TEST_F(OnPostgresql, ThePasswordStandsInNoText) {
  const Error error = failure_of([&] { connect(with("Database=segredo77;PWD=segredo77;")); });
  EXPECT_EQ(error_number::database_failed, error.number());
  EXPECT_NE("", error.description());
  EXPECT_EQ(std::string::npos, error.description().find("segredo77")) << error.description();
}

TEST_F(OnPostgresql, ARestartEndsTheCallUnderWayAndNewConnectionsWork) {
  const auto idle = open();
  const auto busy = open();
  Error error(0, "", "");
  std::thread caller([&] { error = failure_of([&] { run(*busy, "select pg_sleep(30)"); }); });
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  control_server("restart -m fast");
  caller.join();
  EXPECT_EQ(error_number::database_failed, error.number()) << error.description();
  EXPECT_TRUE(busy->lost());
  EXPECT_FALSE(idle->alive());
  EXPECT_EQ("1", first_value(*open(), "select 1"));
}

TEST_F(OnPostgresql, ReadersMayGoToAnotherHost) {
  const std::string where = "select host(inet_server_addr())";
  const std::string keys = with("ReadOnlyServer=127.0.0.2;");
  EXPECT_EQ("127.0.0.1", first_value(*connect(keys), where));
  EXPECT_EQ("127.0.0.2", first_value(*connect(keys, ConnectMode::Read), where));
  const std::string missing = with("ReadOnlyServer=127.0.0.1:1;");
  EXPECT_EQ("127.0.0.1", first_value(*connect(missing, ConnectMode::Read), where));
}

TEST_F(OnPostgresql, NoRoundTripIsSpentForNothing) {
  Proxy proxy(port());
  const auto connection = connect(with(concat("Port=", static_cast<int>(proxy.port()), ";")));
  run(*connection, "drop table if exists counted");
  run(*connection, "create table counted (oid integer primary key, nome varchar(40))");
  const auto trips = [&proxy](auto action) {
    const int before = proxy.round_trips();
    action();
    return proxy.round_trips() - before;
  };
  const auto insert = connection->prepare("insert into counted (oid, nome) values (?, ?)");
  const auto add = [&](int oid) {
    insert->bind(0, Cell::of(std::int64_t{oid}));
    insert->bind(1, Cell::of(std::string_view("nome")));
    insert->run(30);
    insert->reset();
  };
  EXPECT_EQ(1, trips([&] { add(1); }));
  add(2);
  EXPECT_EQ(1, trips([&] { add(3); }));

  const auto select = connection->prepare("select * from counted where oid > ?");
  const auto read = [&] {
    select->bind(0, Cell::of(std::int64_t{0}));
    select->run(30);
    while (select->fetch()) cell_of(*select, 1);
    select->reset();
  };
  read();  // the driver learns about the table
  read();  // the statement is prepared
  EXPECT_EQ(1, trips(read));
  EXPECT_EQ(0, trips([&] { select->columns(); }));

  connection->key_columns("counted");
  EXPECT_EQ(0, trips([&] { connection->key_columns("COUNTED"); }));
  EXPECT_EQ(1, trips([&] { connection->alive(); }));
  EXPECT_EQ(0, trips([&] { connection->tidy(); }));
}

TEST_F(OnPostgresql, AStatementOnAChangedTableIsPreparedAgain) {
  const auto connection = open();
  run(*connection, "drop table if exists changing");
  run(*connection, "create table changing (a integer)");
  run(*connection, "insert into changing values (1)");
  const auto select = connection->prepare("select * from changing");
  for (int i = 0; i < 3; ++i) {
    select->run(30);
    select->reset();
  }
  run(*connection, "alter table changing add b varchar(10) default 'novo'");
  select->run(30);
  ASSERT_TRUE(select->fetch());
  ASSERT_EQ(2u, select->columns()->size());
  EXPECT_EQ("novo", cell_of(*select, 1).text());
}

TEST_F(OnPostgresql, ValuesKeepTheTypesOfTheLiteralsThatTheyStandFor) {
  const auto connection = open();
  run(*connection, "drop table if exists typed");
  run(*connection, "create table typed (oid integer primary key, nome varchar(40))");
  run(*connection, "insert into typed values (1, 'abcdef')");
  const auto found = [&](const std::string& condition, const std::vector<Cell>& values) {
    const auto select = connection->prepare("select oid from typed where " + condition);
    std::string rows;
    for (int i = 0; i < 3; ++i) {  // sent as it is, then prepared, then run again
      for (std::size_t index = 0; index < values.size(); ++index) select->bind(index, values[index]);
      select->run(30);
      rows += select->fetch() ? "1" : "0";
      select->reset();
    }
    return rows;
  };
  const auto decimal = [](std::string_view digits) {
    return Cell::of(digits, dataaccess::CellKind::Decimal);
  };
  EXPECT_EQ("000", found("oid = ?", {decimal("1.5")}));
  EXPECT_EQ("111", found("oid < ?", {decimal("1.5")}));
  EXPECT_EQ("000", found("oid = ?", {Cell::of(std::int64_t{3'000'000'000})}));
  EXPECT_EQ("111", found("oid = ?", {Cell::of(std::string_view("1"))}));
  EXPECT_EQ("111", found("substring(nome, ?, ?) = ?", {Cell::of(std::int64_t{2}), Cell::of(std::int64_t{3}),
                                                       Cell::of(std::string_view("bcd"))}));
  // One text with values of several kinds, as statements that share it bring them.
  const auto select = connection->prepare("select oid from typed where oid = ?");
  for (int i = 0; i < 2; ++i) {
    for (const Cell& one : {Cell::of(std::int64_t{1}), Cell::of(std::string_view("1")), decimal("1.0"),
                            Cell::of(std::int64_t{1})}) {
      select->bind(0, one);
      select->run(30);
      EXPECT_TRUE(select->fetch());
      select->reset();
    }
  }
}

}  // namespace
}  // namespace pradelis::tests
