#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "dataaccess/connection.h"
#include "dataaccess/pool.h"
#include "dataaccess/quelcor.h"
#include "dataaccess/thread_connection.h"
#include "tests/support/engine.h"
#include "tests/support/postgresql.h"
#include "tests/support/raises.h"
#include "tests/support/temporary_folder.h"
#include "values/convert.h"

namespace pradelis::tests {

using namespace pradelis::dataaccess;

/// An empty database of its own on the engine under test, and a connection object to it.
class Database : public ::testing::Test {
 protected:
  Database() {
    conn->set_ConnectionString(url("&create=1"));
    conn->Abrir(2);
    conn->set_ConnectionString(url());
  }
  ~Database() override {
    conn.reset();
    close_idle_connections();
  }

  /// Without waiting for the disk, which no test needs. The options are SQLite's.
  std::string url(const std::string& options = "") const {
    if (on_server) return on_server->connection_string();
    return "sqlite:" + folder.file("a.db") + "?synchronous=OFF" + options;
  }

  std::int64_t execute(const std::string& sql) {
    std::int64_t changed = 0;
    conn->Conexao()->Execute(in_engine_words(sql), &changed);
    return changed;
  }
  RecordsetPtr snapshot(const std::string& sql, std::int32_t most = 0) {
    return conn->AbrirRecordset(sql, CursorType::Static, LockType::ReadOnly, CursorLocation::Server, most);
  }
  RecordsetPtr stream(const std::string& sql) {
    return conn->AbrirRecordset(sql, CursorType::ForwardOnly, LockType::ReadOnly, CursorLocation::Server, 0);
  }
  RecordsetPtr updatable(const std::string& sql, std::int32_t most = 0) {
    return conn->AbrirRecordset(sql, CursorType::Dynamic, LockType::Optimistic, CursorLocation::Server, most);
  }
  /// The first column of the result's rows as texts, with blanks between; "null" for null.
  std::string rows(const std::string& sql) {
    std::string all;
    for (auto rs = snapshot(sql); !rs->Eof(); rs->MoveNext()) {
      if (!all.empty()) all += ' ';
      const Variant value = rs->value(std::size_t{0});
      all += value.is_null() ? "null" : to_text(value);
    }
    return all;
  }

  TemporaryFolder folder;
  std::unique_ptr<PostgresqlDatabase> on_server =
      on_postgresql() ? std::make_unique<PostgresqlDatabase>(PostgresqlDatabase::Content::Empty) : nullptr;
  QLCConnPtr conn = new_thread_connection();
};

}  // namespace pradelis::tests
