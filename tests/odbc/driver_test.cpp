#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include "dataaccess/driver.h"
#include "tests/odbc/servers.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using dataaccess::Cell;
using dataaccess::CellKind;
using dataaccess::ColumnType;
using dataaccess::DriverConnection;

/// What the driver does alike on every server.
class OnEveryServer : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    const std::vector<Server> all = servers();
    const auto server = std::ranges::find(all, GetParam(), &Server::name);
    if (!server->missing.empty()) GTEST_SKIP() << server->missing;
    connection_ = connect(server->connection_string);
    postgresql_ = GetParam() == "PostgreSQL";
    run(*connection_, "drop view if exists kept_view");
    run(*connection_, "drop table if exists values_kept");
    run(*connection_,
        concat("create table values_kept (oid integer primary key, longo text, pequeno smallint, "
               "numero double precision, nome varchar(40), bytes ",
               postgresql_ ? "bytea" : "blob", ", quando timestamp, dia date)"));
  }

  /// Writes `value` into one column of row `oid` by a parameter.
  void write(int oid, const std::string& column, const Cell& value) {
    const auto statement =
        connection_->prepare(concat("insert into values_kept (oid, ", column, ") values (?, ?)"));
    statement->bind(0, Cell::of(std::int64_t{oid}));
    statement->bind(1, value);
    statement->run(30);
    EXPECT_EQ(1, statement->rows_changed());
  }

  std::unique_ptr<DriverConnection> connection_;
  bool postgresql_ = false;
};

std::string letters(std::size_t count) {
  // Characters of one to four bytes, so that every boundary of a block falls inside some of them.
  const std::vector<std::string> alphabet{"a", "ç", "€", "😀"};
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += alphabet[i * 7 / 3 % alphabet.size()];
  return text;
}

TEST_P(OnEveryServer, TextsOfAnyLengthComeBackWhole) {
  int oid = 0;
  for (const std::size_t length : {0, 1, 39, 255, 256, 257, 4095, 4096, 4097, 8190, 100'000, 1'500'000}) {
    SCOPED_TRACE(length);
    const std::string text = letters(length);
    write(++oid, "longo", Cell::of(std::string_view(text)));
    const auto statement = connection_->prepare("select longo, oid, nome from values_kept where oid = ?");
    statement->bind(0, Cell::of(std::int64_t{oid}));
    statement->run(30);
    ASSERT_TRUE(statement->fetch());
    EXPECT_EQ(oid, cell_of(*statement, 1).integer);
    EXPECT_TRUE(cell_of(*statement, 0).text() == text);
    EXPECT_TRUE(cell_of(*statement, 2).is_null());
    EXPECT_TRUE(cell_of(*statement, 0).text() == text) << "asked a second time";
    EXPECT_FALSE(statement->fetch());
  }
}

TEST_P(OnEveryServer, BytesOfAnyLengthComeBackWhole) {
  int oid = 0;
  for (const std::size_t length : {0, 1, 256, 257, 8000, 8001, 70'000, 3'000'000}) {
    SCOPED_TRACE(length);
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; ++i) bytes[i] = static_cast<char>(i * 31);
    write(++oid, "bytes", Cell::of(std::string_view(bytes), CellKind::Bytes));
    const auto statement = connection_->prepare("select bytes, longo, oid from values_kept where oid = ?");
    statement->bind(0, Cell::of(std::int64_t{oid}));
    statement->run(30);
    ASSERT_TRUE(statement->fetch());
    const Cell cell = cell_of(*statement, 0);
    ASSERT_EQ(CellKind::Bytes, cell.kind);
    EXPECT_TRUE(cell.text() == bytes);
    EXPECT_EQ(oid, cell_of(*statement, 2).integer);
  }
}

TEST_P(OnEveryServer, NumbersAndDatesComeBackAsTheyWere) {
  // A comma as decimal sign, where the system has such a locale, must change nothing.
  const char* comma = std::setlocale(LC_ALL, "pt_BR.UTF-8");
  int oid = 0;
  std::vector<double> numbers{-1234567.875, 1e-300, 12.5, 0.1};
  // SQLite's ODBC driver hands numbers on with fifteen digits.
  if (postgresql_) numbers.insert(numbers.end(), {0.1 + 0.2, 1.7976931348623157e308});
  for (const double number : numbers) {
    write(++oid, "numero", Cell::of(number));
    const auto statement = connection_->prepare(concat("select numero from values_kept where oid = ", oid));
    statement->run(30);
    ASSERT_TRUE(statement->fetch());
    EXPECT_EQ(number, cell_of(*statement, 0).real);
    const auto same = connection_->prepare("select oid from values_kept where oid = ? and numero = ?");
    same->bind(0, Cell::of(std::int64_t{oid}));
    same->bind(1, Cell::of(number));
    same->run(30);
    EXPECT_TRUE(same->fetch());
  }
  for (const Date date :
       {make_date({2026, 3, 5, 14, 7, 33}), make_date({1899, 12, 29, 6}), make_date({1850, 1, 2}),
        make_date({2079, 12, 31, 23, 59, 59, 250}), make_date({2024, 2, 29, 23, 59, 59, 999})}) {
    write(++oid, "quando", Cell::of(date.serial, CellKind::Date));
    const auto statement = connection_->prepare(concat("select quando from values_kept where oid = ", oid));
    statement->run(30);
    ASSERT_TRUE(statement->fetch());
    EXPECT_EQ(date.serial, cell_of(*statement, 0).real);
  }
  if (comma != nullptr) std::setlocale(LC_ALL, "C");
}

TEST_P(OnEveryServer, NullsGoInAndOutWhateverWasBoundBefore) {
  const auto insert = connection_->prepare(
      "insert into values_kept (oid, nome, pequeno, bytes, quando) values (?, ?, ?, ?, ?)");
  const auto add = [&insert](int oid, bool nulls) {
    insert->bind(0, Cell::of(std::int64_t{oid}));
    insert->bind(1, nulls ? Cell::null() : Cell::of(std::string_view("nome")));
    insert->bind(2, nulls ? Cell::null(ColumnType::Int16) : Cell::of(std::int64_t{7}));
    insert->bind(
        3, nulls ? Cell::null(ColumnType::Bytes) : Cell::of(std::string_view("\0b", 2), CellKind::Bytes));
    insert->bind(
        4, nulls ? Cell::null(ColumnType::Date) : Cell::of(make_date({2024, 1, 2}).serial, CellKind::Date));
    insert->run(30);
    insert->reset();
  };
  add(1, true);
  add(2, false);
  add(3, true);
  const auto read = connection_->prepare("select nome, pequeno, bytes, quando from values_kept order by oid");
  read->run(30);
  for (const bool null : {true, false, true}) {
    ASSERT_TRUE(read->fetch());
    for (std::size_t column = 0; column < 4; ++column)
      EXPECT_EQ(null, cell_of(*read, column).is_null()) << column;
  }
  EXPECT_FALSE(read->fetch());
}

TEST_P(OnEveryServer, RowsComeInBlocksAndEveryOneOnce) {
  for (const int count : {0, 1, 127, 128, 129, 300}) {
    SCOPED_TRACE(count);
    run(*connection_, "delete from values_kept");
    for (int i = 1; i <= count; ++i) {
      const std::string text = letters(static_cast<std::size_t>(i * 3));
      write(i, "longo", Cell::of(std::string_view(text)));
    }
    const auto statement = connection_->prepare("select oid, longo from values_kept order by oid");
    for (int repetition = 0; repetition < 3; ++repetition) {
      statement->run(30);
      int expected = 0;
      while (statement->fetch()) {
        EXPECT_EQ(++expected, cell_of(*statement, 0).integer);
        if (expected % 2 == 0) {
          EXPECT_TRUE(cell_of(*statement, 1).text() == letters(static_cast<std::size_t>(expected * 3)));
        }
      }
      EXPECT_EQ(count, expected);
      EXPECT_FALSE(statement->fetch());
      statement->reset();
    }
  }
}

TEST_P(OnEveryServer, ResultsStandOpenSideBySide) {
  for (int i = 1; i <= 400; ++i) write(i, "pequeno", Cell::of(std::int64_t{i}));
  const auto outer = connection_->prepare("select oid from values_kept order by oid");
  const auto inner = connection_->prepare("select pequeno from values_kept where oid = ?");
  outer->run(30);
  int rows = 0;
  while (outer->fetch()) {
    ++rows;
    inner->bind(0, cell_of(*outer, 0));
    inner->run(30);
    ASSERT_TRUE(inner->fetch());
    EXPECT_EQ(rows, cell_of(*inner, 0).integer);
    inner->reset();
  }
  EXPECT_EQ(400, rows);
}

TEST_P(OnEveryServer, ColumnsAreKnownBeforeTheStatementRuns) {
  const auto statement = connection_->prepare(
      "select oid, longo, pequeno, numero, nome, bytes, quando, dia from values_kept where oid = ?");
  const dataaccess::ResultColumns& columns = *statement->columns();
  const std::vector<ColumnType> types{ColumnType::Int32,  ColumnType::Text, ColumnType::Int16,
                                      ColumnType::Double, ColumnType::Text, ColumnType::Bytes,
                                      ColumnType::Date,   ColumnType::Date};
  ASSERT_EQ(types.size(), columns.size());
  for (std::size_t i = 0; i < types.size(); ++i) EXPECT_EQ(types[i], columns[i].type) << columns[i].name;
  EXPECT_EQ("oid", columns[0].name);
  EXPECT_FALSE(columns[6].day_only);
  EXPECT_TRUE(columns[7].day_only);
  EXPECT_TRUE(connection_->prepare("delete from values_kept")->columns()->empty());
}

TEST_P(OnEveryServer, KeysComeFromTheCatalogue) {
  run(*connection_, "create view kept_view as select oid from values_kept");
  run(*connection_, "drop table if exists two_keys");
  run(*connection_, "create table two_keys (b integer, c integer, a integer, primary key (c, a))");
  using Names = std::vector<std::string>;
  EXPECT_EQ(Names{"oid"}, connection_->key_columns("Values_Kept"));
  EXPECT_EQ((Names{"c", "a"}), connection_->key_columns("two_keys"));
  EXPECT_EQ(Names{}, connection_->key_columns("kept_view"));
}

TEST_P(OnEveryServer, FailuresHaveTheirNumbers) {
  run(*connection_, "insert into values_kept (oid) values (1)");
  const std::vector<std::pair<std::string, std::int32_t>> cases{
      {"select * from there_is_none", error_number::no_such_table},
      {"selec oid from values_kept", error_number::wrong_statement},
      {"select there_is_none from values_kept", error_number::wrong_statement},
      {"insert into values_kept (oid) values (1)", error_number::constraint_refused},
  };
  for (const auto& [sql, number] : cases) {
    try {
      run(*connection_, sql);
      ADD_FAILURE() << sql;
    } catch (const Error& error) {
      EXPECT_EQ(number, error.number()) << sql << ": " << error.description();
      EXPECT_NE("", error.description());
    }
  }
  EXPECT_EQ("1", first_value(*connection_, "select count(*) from values_kept")) << "the connection goes on";
  EXPECT_FALSE(connection_->lost());
}

TEST_P(OnEveryServer, TextsThatDriversWouldCutAreRefused) {
  const auto statement = connection_->prepare("insert into values_kept (oid, nome) values (9, ?)");
  for (const std::string_view text : {std::string_view("a\0b", 3), std::string_view("caf\xe9")}) {
    try {
      statement->bind(0, Cell::of(text));
      ADD_FAILURE();
    } catch (const Error& error) {
      EXPECT_EQ(error_number::value_does_not_fit, error.number());
    }
  }
}

TEST_P(OnEveryServer, ReadOnlyConnectionsRefuseChanges) {
  const std::vector<Server> all = servers();
  const auto server = std::ranges::find(all, GetParam(), &Server::name);
  const auto reader = connect(server->connection_string, dataaccess::ConnectMode::Read);
  EXPECT_EQ("0", first_value(*reader, "select count(*) from values_kept"));
  try {
    run(*reader, "insert into values_kept (oid) values (1)");
    ADD_FAILURE();
  } catch (const Error& error) {
    EXPECT_EQ(error_number::not_writable, error.number()) << error.description();
  }
}

INSTANTIATE_TEST_SUITE_P(Servers, OnEveryServer, testing::Values("PostgreSQL", "SQLite"),
                         [](const auto& each) { return each.param; });

}  // namespace
}  // namespace pradelis::tests
