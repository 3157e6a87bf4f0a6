#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "dataaccess/read_hold.h"
#include "tests/dataaccess/database_fixture.h"

namespace pradelis::tests {
namespace {

constexpr const char* endless =
    "with recursive c(n) as (select 1 union all select n+1 from c) select count(*) from c where n < 0";

double seconds_of(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

class ConnectionTest : public Database {
 protected:
  ConnectionTest() {
    execute(
        "create table t (oid integer primary key, nome varchar(30) not null, pai integer references t (oid))");
    execute("insert into t values (1, 'um', null), (2, 'dois', null)");
  }
  ConnectionPtr closed(const std::string& options = "") const {
    auto connection = new_connection();
    connection->set_ConnectionString(url(options));
    return connection;
  }
  ConnectionPtr opened(const std::string& options = "") const {
    auto connection = closed(options);
    connection->Open();
    return connection;
  }
};

TEST_F(ConnectionTest, MapsFailuresToNumbers) {
  const struct {
    const char* sql;
    std::int32_t number;
    const char* part;
  } cases[] = {
      {"selec 1", error_number::wrong_statement, "Instrução inválida: selec 1: near \"selec\""},
      {"", error_number::wrong_statement, "vazia"},
      {"  -- nada", error_number::wrong_statement, "vazia"},
      {"select 1; select 2", error_number::wrong_statement, "mais de uma instrução"},
      {"select * from t where oid = ", error_number::wrong_statement, "incomplete input"},
      {"select * from t where oid = ?", error_number::wrong_statement, "marcador"},
      {"select * from t where oid = :a", error_number::wrong_statement, ":a"},
      {"select * from t where oid in ( )", error_number::wrong_statement, "lista vazia"},
      {"select nada from t", error_number::wrong_statement, "no such column: nada"},
      {"select \"nada\" from t", error_number::wrong_statement, "nada"},
      {"select * from nada", error_number::no_such_table, "no such table: nada"},
      {"insert into nada values (1)", error_number::no_such_table, "nada"},
      {"insert into t values (1, 'x', null)", error_number::constraint_refused,
       "UNIQUE constraint failed: t.oid"},
      {"insert into t (oid) values (3)", error_number::constraint_refused,
       "NOT NULL constraint failed: t.nome"},
      {"insert into t values ('x', 'x', null)", error_number::value_does_not_fit, "datatype mismatch"},
      {"select '\xFF'", error_number::wrong_statement, "UTF-8"},
  };
  for (const auto& one : cases) {
    EXPECT_TRUE(raises(one.number, one.part, [&] { snapshot(one.sql); })) << one.sql;
    EXPECT_TRUE(raises(one.number, one.part, [&] { execute(one.sql); })) << one.sql;
  }
  EXPECT_TRUE(raises(error_number::wrong_statement, "nulo", [&] { snapshot(std::string("select 1\0", 9)); }));
  EXPECT_EQ(rows("select nome from t; "), "um dois");
}

TEST_F(ConnectionTest, ShowsNoTextsOfAFailingStatement) {
  EXPECT_TRUE(raises(error_number::no_such_table, "select * from nada where senha = '…' and oid = 5",
                     [&] { snapshot("select * from nada where senha = 'segredo' and oid = 5"); }));
}

TEST_F(ConnectionTest, RefusesMissingFilesAndStrangeStrings) {
  const std::string missing = folder.file("missing.db");
  const std::string folder_path = std::filesystem::path(missing).parent_path().string();
  std::ofstream(folder.file("text.db")) << std::string(4096, 'x');
  const struct {
    std::string connection_string, part;
  } cases[] = {
      {"sqlite:" + missing, missing},
      {"sqlite:" + missing + "?synchronous=FULL", missing},
      {"sqlite:" + folder_path, folder_path},
      {"sqlite:" + folder.file("text.db"), "not a database"},
      {"sqlite:", "caminho"},
      {"sqlite:x?sincrono=1", "sincrono=1"},
      {"sqlite:x?busy=-5", "busy=-5"},
      {"sqlite:x?synchronous=TALVEZ", "TALVEZ"},
      {"outro:senha=segredo", "nenhum banco de dados"},
      {"", "vazia"},
  };
  for (const auto& one : cases) {
    const auto connection = new_connection();
    connection->set_ConnectionString(one.connection_string);
    EXPECT_TRUE(raises(error_number::database_failed, one.part, [&] { connection->Open(); }))
        << one.connection_string;
    EXPECT_EQ(connection->State(), ObjectState::Closed);
  }
  EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST_F(ConnectionTest, ConfiguresTheDatabase) {
  EXPECT_EQ(rows("pragma journal_mode"), "wal");
  EXPECT_EQ(rows("pragma synchronous"), "0");
  const auto usual = new_connection();
  usual->set_ConnectionString("sqlite:" + folder.file("a.db"));
  usual->Open();
  EXPECT_EQ(usual->Execute("pragma synchronous")->value(std::size_t{0}), Variant(std::int32_t{2})) << "FULL";
  execute("insert into t values (5, 'açúcar', null)");
  EXPECT_EQ(rows("select nome from t where UPPER(nome) = UPPER('AçÚcar')"), "açúcar");
  EXPECT_EQ(rows("select upper(nome) || lower('ÁÉ') from t where lower(nome) = 'açúcar'"), "AÇÚCARáé");
  EXPECT_EQ(rows("Select (isnull(max(oid),0) + 1) as OID from t where oid > 100"), "1");
}

TEST_F(ConnectionTest, ReadModeRefusesChanges) {
  const auto reader = closed();
  reader->set_Mode(ConnectMode::Read);
  reader->set_Location(CursorLocation::Client);
  reader->Open();
  EXPECT_EQ(reader->Execute("select * from t")->RecordCount(), 2);
  for (const char* sql : {"insert into t values (9, 'x', null)", "delete from t", "create table u (a)"}) {
    EXPECT_TRUE(raises(error_number::database_failed, "readonly", [&] { reader->Execute(sql); })) << sql;
  }
  EXPECT_EQ(rows("select count(*) from t"), "2");
}

TEST_F(ConnectionTest, ReportsRowsChanged) {
  EXPECT_EQ(execute("update t set nome = 'x'"), 2);
  EXPECT_EQ(execute("update t set nome = 'x' where oid = 77"), 0);
  EXPECT_EQ(execute("create table u (a)"), 0);
  EXPECT_EQ(execute("delete from t"), 2);
}

TEST_F(ConnectionTest, ClosingClosesItsRecordsets) {
  const auto connection = opened();
  const auto streamed = connection->Execute("select * from t");
  connection->set_Location(CursorLocation::Client);
  const auto read = connection->Execute("select * from t");
  EXPECT_TRUE(raises(3705, [&] { connection->Open(); }));
  connection->Close();
  EXPECT_EQ(streamed->State(), ObjectState::Closed);
  EXPECT_EQ(read->State(), ObjectState::Closed);
  EXPECT_TRUE(raises(error_number::closed_object, [&] { connection->Close(); }));
  EXPECT_TRUE(raises(error_number::closed_object, [&] { connection->Execute("select 1"); }));
  connection->Open();
  EXPECT_EQ(connection->Execute("select * from t")->RecordCount(), 2);
}

TEST_F(ConnectionTest, RecordsetKeepsItsConnection) {
  RecordsetPtr streamed;
  {
    const auto connection = opened();
    streamed = connection->Execute("select nome from t order by oid");
  }
  streamed->MoveNext();
  EXPECT_EQ(streamed->value("nome"), Variant("dois"));
}

TEST_F(ConnectionTest, ClosingTakesAnOpenTransactionBack) {
  auto connection = opened();
  connection->Execute("begin");
  connection->Execute("delete from t");
  connection->Close();
  EXPECT_EQ(rows("select count(*) from t"), "2");
  EXPECT_EQ(execute("delete from t where oid = 1"), 1) << "no lock is left";

  const auto reader = new_connection();
  reader->set_ConnectionString(conn->ConnectionString());
  reader->set_Mode(ConnectMode::Read);
  reader->Open();
  reader->Execute("begin");
  EXPECT_EQ(reader->Execute("select count(*) from t")->value(0), Variant(std::int32_t{1}));
  execute("delete from t");
  EXPECT_EQ(reader->Execute("select count(*) from t")->value(0), Variant(std::int32_t{1}))
      << "it is one read";
  reader->Close();
}

TEST_F(ConnectionTest, AReadHoldShowsOneStateAndEndsWithoutTrace) {
  const auto reader = closed();
  reader->set_Mode(ConnectMode::Read);
  reader->set_Location(CursorLocation::Client);
  reader->Open();
  const auto count = [&] { return reader->Execute("select count(*) from t")->value(0); };
  {
    const ReadHold hold(reader);
    EXPECT_EQ(count(), Variant(std::int32_t{2}));
    EXPECT_EQ(execute("delete from t where oid = 1"), 1) << "writers do not wait";
    EXPECT_EQ(count(), Variant(std::int32_t{2}));
  }
  EXPECT_EQ(count(), Variant(std::int32_t{1}));
  EXPECT_EQ(rows("pragma wal_checkpoint(truncate)"), "0") << "nothing is left standing";
}

TEST_F(ConnectionTest, AReadHoldLeavesATransactionAlone) {
  const auto connection = opened();
  connection->Execute("begin");
  connection->Execute("delete from t");
  { const ReadHold hold(connection); }
  connection->Execute("rollback");
  EXPECT_EQ(rows("select nome from t"), "um dois");
  const ReadHold hold(connection);
  connection->Close();
}

TEST_F(ConnectionTest, AnotherConnectionStringOpensAnotherDatabase) {
  const auto kept = snapshot("select nome from t order by oid");
  conn->set_ConnectionString("sqlite:" + folder.file("b.db") + "?create=1");
  EXPECT_TRUE(raises(error_number::no_such_table, [&] { snapshot("select * from t"); }));
  EXPECT_EQ(kept->value("nome"), Variant("um"));
  conn->set_ConnectionString(url());
  EXPECT_EQ(rows("select nome from t"), "um dois");
}

TEST_F(ConnectionTest, OpensAgainAfterClose) {
  conn->Conexao()->Close();
  EXPECT_EQ(rows("select nome from t"), "um dois");
  conn->Conexao()->Close();
  conn->Abrir(2);
  EXPECT_EQ(conn->Conexao()->State(), ObjectState::Open);
}

TEST_F(ConnectionTest, CommandTimeoutEndsAStatement) {
  conn->set_CommandTimeout(1);
  const double taken = seconds_of([&] {
    EXPECT_TRUE(raises(error_number::timed_out, "Tempo do comando esgotado", [&] { snapshot(endless); }));
  });
  EXPECT_GT(taken, 0.9);
  EXPECT_LT(taken, 5.0);
  EXPECT_EQ(rows("select nome from t"), "um dois") << "the connection goes on working";
}

TEST_F(ConnectionTest, WaitingForAnotherWriterEndsInTime) {
  const auto writer = opened();
  writer->Execute("begin immediate");
  conn->set_CommandTimeout(1);
  const double taken = seconds_of(
      [&] { EXPECT_TRUE(raises(error_number::timed_out, "locked", [&] { execute("delete from t"); })); });
  EXPECT_GT(taken, 0.9);
  EXPECT_LT(taken, 5.0);

  const auto impatient = opened("&busy=50");
  EXPECT_LT(seconds_of([&] {
              EXPECT_TRUE(raises(error_number::timed_out, [&] { impatient->Execute("delete from t"); }));
            }),
            0.9);

  std::thread release([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    writer->Execute("commit");
  });
  EXPECT_EQ(execute("update t set nome = 'x' where oid = 1"), 1);
  release.join();
}

TEST_F(ConnectionTest, ReplacesAConnectionWhoseFileIsGone) {
  auto connection = opened();
  connection->Close();
  conn.reset();  // all connections lie in the pool now
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(folder.file("a.db") + suffix);
  std::this_thread::sleep_for(std::chrono::milliseconds(10));  // what was used just now is not asked
  const auto another = closed("&create=1");
  another->Open();
  another->Execute("create table nova (a integer)");
  connection->Open();
  EXPECT_TRUE(raises(error_number::no_such_table, [&] { connection->Execute("select * from t"); }));
  EXPECT_TRUE(connection->Execute("select * from nova")->Eof());
}

TEST_F(ConnectionTest, ThreadsShareThePool) {
  constexpr int threads = 16;
  constexpr int rounds = 25;
  std::vector<std::thread> all;
  for (int thread = 0; thread < threads; ++thread) {
    all.emplace_back([this, thread] {
      for (int round = 0; round < rounds; ++round) {
        const auto writer = opened();
        writer->Execute("insert into t values (" + std::to_string(1000 + thread * rounds + round) +
                        ", 'x', null)");
        const auto reader = closed();
        reader->set_Mode(ConnectMode::Read);
        reader->Open();
        const auto rs = reader->Execute("select count(*) n from t where nome = 'x'");
        EXPECT_GE(to_int32(rs->value("n")), round + 1);
      }
    });
  }
  for (std::thread& thread : all) thread.join();
  EXPECT_EQ(rows("select count(*) from t where nome = 'x'"), std::to_string(threads * rounds));
}

}  // namespace
}  // namespace pradelis::tests
