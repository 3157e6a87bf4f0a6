#include <chrono>
#include <thread>
#include <utility>

#include "dataaccess/driver.h"
#include "tests/dataaccess/database_fixture.h"

// A server that goes away cannot be had from the embedded database: this driver passes everything on to
// it, and loses connections when told to.
namespace pradelis::tests {
namespace {

struct Server {
  int connections = 0;
  bool up = true;
  int generation = 0;  // raised when all its connections are cut
  bool falls_at_next_run = false;
  int open_results = 0;
  int most_open_results = 0;
};
Server server;

[[noreturn]] void fail_lost() { raise(error_number::database_failed, "a conexão caiu"); }

class FragileStatement final : public DriverStatement {
 public:
  FragileStatement(std::unique_ptr<DriverStatement> real, bool& lost) : real_(std::move(real)), lost_(lost) {}
  ~FragileStatement() override { count(false); }
  const ResultColumnsPtr& columns() override { return real_->columns(); }
  void bind(std::size_t index, const Cell& value) override { real_->bind(index, value); }
  void run(std::int16_t seconds) override {
    if (std::exchange(server.falls_at_next_run, false)) lost_ = true;
    check();
    count(!columns()->empty());
    real_->run(seconds);
  }
  bool fetch() override {
    check();
    return real_->fetch();
  }
  void renew_time() noexcept override { real_->renew_time(); }
  void read(std::size_t first, std::span<Cell> cells) override { real_->read(first, cells); }
  std::int64_t rows_changed() override { return real_->rows_changed(); }
  void reset() noexcept override {
    count(false);
    real_->reset();
  }

 private:
  void check() const {
    if (lost_) fail_lost();
  }
  void count(bool open) {
    server.open_results += int{open} - int{open_};
    server.most_open_results = std::max(server.most_open_results, server.open_results);
    open_ = open;
  }

  std::unique_ptr<DriverStatement> real_;
  bool& lost_;
  bool open_ = false;
};

class FragileConnection final : public DriverConnection {
 public:
  explicit FragileConnection(std::unique_ptr<DriverConnection> real) : real_(std::move(real)) {
    ++server.connections;
  }
  ~FragileConnection() override { --server.connections; }
  std::unique_ptr<DriverStatement> prepare(std::string_view sql) override {
    if (!works()) fail_lost();
    return std::make_unique<FragileStatement>(real_->prepare(sql), lost_);
  }
  std::vector<std::string> key_columns(std::string_view table) override { return real_->key_columns(table); }
  const Dialect& dialect() const override { return real_->dialect(); }
  ConnectionTraits traits() const override { return {.remote = true, .one_result = true}; }
  bool alive() noexcept override { return works(); }
  bool lost() const noexcept override { return lost_; }
  bool hindered_by_open_results() const noexcept override { return real_->hindered_by_open_results(); }
  void tidy() noexcept override { real_->tidy(); }

 private:
  bool works() {
    lost_ = lost_ || generation_ != server.generation;
    return !lost_;
  }

  std::unique_ptr<DriverConnection> real_;
  int generation_ = server.generation;
  bool lost_ = false;
};

class FragileDriver final : public Driver {
 public:
  bool accepts(std::string_view text) const override { return text.starts_with("fragil:"); }
  std::unique_ptr<DriverConnection> connect(const ConnectionSettings& settings) const override {
    if (!server.up) raise(error_number::database_failed, "o servidor não responde");
    ConnectionSettings real = settings;
    real.connection_string = "sqlite:" + settings.connection_string.substr(7);
    return std::make_unique<FragileConnection>(driver_for(real.connection_string).connect(real));
  }
  std::size_t kept_idle() const noexcept override { return 0; }
};

class LostConnection : public Database {
 protected:
  LostConnection() {
    static const bool once = (register_driver(std::make_unique<FragileDriver>()), true);
    static_cast<void>(once);
    server = {};
    execute("create table t (oid integer primary key, nome text)");
    execute("insert into t values (1, 'um'), (2, 'dois')");
    conn->set_ConnectionString("fragil:" + folder.file("a.db"));
  }
  /// And lets the moment pass for which a connection that has just answered is not asked again.
  static void cut_connections() {
    ++server.generation;
    std::this_thread::sleep_for(std::chrono::milliseconds(25));
  }
  void begin_new_work() { conn->set_ConnectionString(conn->ConnectionString()); }
};

TEST_F(LostConnection, PoolReplacesADeadConnection) {
  const auto connection = new_connection();
  connection->set_ConnectionString(conn->ConnectionString());
  connection->Open();
  connection->Close();
  EXPECT_EQ(server.connections, 1);
  cut_connections();
  connection->Open();
  EXPECT_EQ(connection->Execute("select nome from t")->value("nome"), Variant("um"));
  EXPECT_EQ(server.connections, 1);
}

TEST_F(LostConnection, IsOpenedAgainAtTheNextUse) {
  const auto read = snapshot("select nome from t order by oid");
  const auto standing = stream("select nome from t order by oid");
  const auto unread = updatable("select nome from t where oid = 2");
  begin_new_work();
  cut_connections();
  EXPECT_EQ(rows("select nome from t order by oid"), "um dois");
  EXPECT_EQ(read->value("nome"), Variant("um")) << "rows in memory stay";
  EXPECT_EQ(standing->State(), ObjectState::Closed);
  unread->set("nome", "DOIS");
  unread->Update();
  EXPECT_EQ(rows("select nome from t order by oid"), "um DOIS");
}

TEST_F(LostConnection, TransactionIsNotGoneOnWithAfterIt) {
  execute("begin");
  execute("delete from t where oid = 1");
  cut_connections();
  EXPECT_THROW(execute("delete from t where nome = 'dois'"), Error);
  EXPECT_EQ(rows("select nome from t order by oid"), "um dois");
}

TEST_F(LostConnection, CallUnderWayFailsAndIsNotRepeated) {
  EXPECT_EQ(rows("select nome from t order by oid"), "um dois");
  server.falls_at_next_run = true;
  EXPECT_TRUE(raises(error_number::database_failed, "caiu", [&] { execute("delete from t where oid = 1"); }));
  EXPECT_EQ(rows("select nome from t order by oid"), "um dois");
}

TEST_F(LostConnection, ServerThatIsDownIsReportedUntilItIsBack) {
  EXPECT_EQ(rows("select nome from t where oid = 1"), "um");
  cut_connections();
  server.up = false;
  begin_new_work();
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_TRUE(raises(error_number::database_failed, "não responde", [&] { rows("select nome from t"); }));
  }
  server.up = true;
  EXPECT_EQ(rows("select nome from t where oid = 1"), "um");
}

TEST_F(LostConnection, OneResultAtATimeIsEnough) {
  const auto outer = stream("select nome from t order by oid");
  const auto table = updatable("select * from t order by oid");
  EXPECT_EQ(table->value("nome"), Variant("um"));
  EXPECT_EQ(rows("select nome from t order by oid"), "um dois");
  const auto inner = stream("select nome from t order by oid desc");
  outer->MoveNext();
  EXPECT_EQ(outer->value("nome"), Variant("dois"));
  EXPECT_EQ(inner->value("nome"), Variant("dois"));
  EXPECT_EQ(server.most_open_results, 1);
}

}  // namespace
}  // namespace pradelis::tests
