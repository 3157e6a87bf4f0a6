#include "tests/support/postgresql.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "dataaccess/pool.h"
#include "dataaccess/schema/schema.h"
#include "tests/support/database.h"
#include "tests/support/engine.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

/// Passes over all tests of the process where there is no server for them.
class ServerNeeded : public ::testing::Environment {
 public:
  void SetUp() override {
    if (!on_postgresql() || !environment("PRADELIS_POSTGRES").empty()) return;
    const std::string reason = environment("PRADELIS_POSTGRES_MISSING");
    GTEST_SKIP() << (reason.empty() ? "to be run by scripts/with-postgres" : reason);
  }
};

const ::testing::Environment* const server_needed = ::testing::AddGlobalTestEnvironment(new ServerNeeded);

std::string connection_to(const std::string& database) {
  return concat(environment("PRADELIS_POSTGRES"), "Database=", database, ";");
}

/// Databases of each content that nobody uses now.
std::vector<std::string>& unused(PostgresqlDatabase::Content content) {
  static std::vector<std::string> of_each[2];
  return of_each[static_cast<std::size_t>(content)];
}

std::string create_database() {
  static int count = 0;
  const std::string name = concat("teste_", ++count);
  SideConnection server(connection_to("postgres"));
  server.run("create database " + name);
  server.run(concat("alter database ", name, " set synchronous_commit = off"));
  return name;
}

/// Keeps the rows of a new database in tables beside it, from which they come back.
constexpr const char* keep_rows = R"(do $$
declare each text;
begin
  create schema modelo;
  for each in select tablename from pg_tables where schemaname = 'public' loop
    execute format('create table modelo.%I as select * from public.%I', each, each);
  end loop;
  create table modelo.relations as select relname from pg_class where relnamespace = 'public'::regnamespace;
end $$)";

constexpr const char* bring_rows_back = R"(do $$
declare each text;
begin
  for each in select tablename from pg_tables where schemaname = 'public' loop
    execute format('delete from public.%I', each);
    execute format('insert into public.%I select * from modelo.%I', each, each);
  end loop;
  for each in select sequencename from pg_sequences where schemaname = 'public' loop
    perform setval(each::regclass, 1, false);
  end loop;
end $$)";

/// How many relations a test has added or removed.
constexpr const char* changed_relations =
    "select count(*) from (select relname from pg_class where relnamespace = 'public'::regnamespace) a"
    " full join modelo.relations b on a.relname = b.relname where a.relname is null or b.relname is null";

std::string create_initialised() {
  const std::string name = create_database();
  dataaccess::schema::InitOptions options;
  options.maintenance_password = [] { return std::string(maintenance_password); };
  options.password_rounds = 1;
  dataaccess::schema::initialise(connection_to(name), options);
  SideConnection(connection_to(name)).run(keep_rows);
  return name;
}

std::string take(PostgresqlDatabase::Content content) {
  std::vector<std::string>& free = unused(content);
  if (free.empty()) {
    return content == PostgresqlDatabase::Content::Initialised ? create_initialised() : create_database();
  }
  std::string name = std::move(free.back());
  free.pop_back();
  return name;
}

void clean(PostgresqlDatabase::Content content, const std::string& name) {
  SideConnection side(connection_to(name));
  if (content == PostgresqlDatabase::Content::Empty) {
    side.run("drop schema public cascade");
    side.run("create schema public");
  } else if (side.rows(changed_relations) == "0") {
    side.run(bring_rows_back);
  } else {
    return;  // not to be used again
  }
  unused(content).push_back(name);
}

}  // namespace

PostgresqlDatabase::PostgresqlDatabase(Content content) : content_(content), name_(take(content)) {
  static int count = 0;
  connection_string_ = concat(connection_to(name_), "Description=", ++count, ";");
}

PostgresqlDatabase::~PostgresqlDatabase() {
  try {
    clean(content_, name_);
  } catch (const std::exception& failure) {
    ADD_FAILURE() << failure.what();
  }
  dataaccess::close_idle_connections();
}

}  // namespace pradelis::tests
