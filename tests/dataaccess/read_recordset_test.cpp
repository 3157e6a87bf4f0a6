#include "tests/dataaccess/database_fixture.h"
#include "values/date.h"

namespace pradelis::tests {
namespace {

class ReadRecordset : public Database {
 protected:
  ReadRecordset() {
    execute(
        "create table t (oid integer primary key, nome varchar(30), valor double, quando datetime, "
        "dia date, ativo bit, dado blob, pequeno smallint, byte tinyint, grande bigint, livre varchar(9))");
    execute(
        "insert into t values (1, 'um', 1.5, '2026-03-05 14:07:33', '2026-03-05', '1', x'00ff', 12, 200, "
        "5000000000, 'x')");
    execute("insert into t (oid, nome) values (2, 'dois'), (3, 'três')");
  }
};

TEST_F(ReadRecordset, GivesEachColumnInItsType) {
  const auto rs = snapshot("select * from t");
  const Date moment = make_date({.year = 2026, .month = 3, .day = 5, .hour = 14, .minute = 7, .second = 33});
  const struct {
    const char* name;
    ColumnType type;
    Variant value;
  } expected[] = {
      {"OID", ColumnType::Int32, std::int32_t{1}},
      {"Nome", ColumnType::Text, "um"},
      {"valor", ColumnType::Double, 1.5},
      {"quando", ColumnType::Date, moment},
      {"dia", ColumnType::Date, make_date({.year = 2026, .month = 3, .day = 5})},
      {"ativo", ColumnType::Boolean, true},
      {"dado", ColumnType::Bytes, Bytes{std::byte{0}, std::byte{0xFF}}},
      {"pequeno", ColumnType::Int16, std::int16_t{12}},
      {"byte", has_bytes_as_numbers() ? ColumnType::UInt8 : ColumnType::Int16,
       has_bytes_as_numbers() ? Variant(std::uint8_t{200}) : Variant(std::int16_t{200})},
      {"grande", ColumnType::Int64, std::int64_t{5000000000}},
      {"livre", ColumnType::Text, "x"},
  };
  ASSERT_EQ(rs->field_count(), std::size(expected));
  for (const auto& field : expected) {
    const std::size_t index = rs->field_index(field.name);
    EXPECT_EQ(rs->value(index), field.value) << field.name;
    EXPECT_EQ(rs->field_type(index), field.type) << field.name;
  }
  rs->MoveNext();
  EXPECT_TRUE(rs->value("valor").is_null());
  EXPECT_EQ(rs->field_type(rs->field_index("valor")), ColumnType::Double);
}

TEST_F(ReadRecordset, TypesExpressionsByTheirFirstRow) {
  if (types_expressions()) GTEST_SKIP() << "expressions have types before there is a row";
  const auto rs =
      snapshot("select count(*) n, sum(5000000000) g, max(nome) m, avg(oid) a, null x, valor v from t");
  EXPECT_EQ(rs->value("n"), Variant(std::int32_t{3}));
  EXPECT_EQ(rs->field_type(0), ColumnType::Int32);
  EXPECT_EQ(rs->value("g"), Variant(std::int64_t{15000000000}));
  EXPECT_EQ(rs->field_type(1), ColumnType::Int64);
  EXPECT_EQ(rs->field_type(2), ColumnType::Text);
  EXPECT_EQ(rs->field_type(3), ColumnType::Double);
  EXPECT_TRUE(rs->value("x").is_null());
}

TEST_F(ReadRecordset, ShowsWhatDoesNotFitItsColumnAsItIs) {
  if (!keeps_any_type()) GTEST_SKIP() << "columns hold values of their type only";
  execute("insert into t (oid, valor, quando, pequeno) values (4, 'abc', 'ontem', 70000)");
  const auto rs = snapshot("select * from t where oid = 4");
  EXPECT_EQ(rs->value("valor"), Variant("abc"));
  EXPECT_EQ(rs->value("quando"), Variant("ontem"));
  EXPECT_EQ(rs->value("pequeno"), Variant(std::int32_t{70000}));
}

TEST_F(ReadRecordset, SnapshotKeepsItsRows) {
  const auto rs = snapshot("select nome from t order by oid");
  EXPECT_EQ(rs->RecordCount(), 3);
  execute("delete from t");
  EXPECT_EQ(rs->value("nome"), Variant("um"));
  rs->MoveNext();
  rs->MoveNext();
  EXPECT_EQ(rs->value("nome"), Variant("três"));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  EXPECT_FALSE(rs->Bof());
  EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->MoveNext(); }));
  EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->value("nome"); }));
  rs->MoveFirst();
  EXPECT_EQ(rs->value("nome"), Variant("um"));
}

TEST_F(ReadRecordset, StreamsStandOpenSideBySide) {
  const auto outer = stream("select oid, nome from t order by oid");
  std::string seen;
  for (; !outer->Eof(); outer->MoveNext()) {
    const auto inner = stream("select oid, nome from t order by oid");
    for (; !inner->Eof(); inner->MoveNext()) seen += to_text(inner->value("oid"));
    seen += to_text(outer->value("nome"));
  }
  EXPECT_EQ(seen, "123um123dois123três");
  EXPECT_EQ(outer->RecordCount(), -1);
}

TEST_F(ReadRecordset, StreamLeavesItsFirstRowForGood) {
  const auto rs = stream("select oid from t order by oid");
  rs->MoveFirst();
  EXPECT_EQ(rs->value("oid"), Variant(std::int32_t{1}));
  rs->MoveNext();
  EXPECT_TRUE(raises(error_number::not_writable, [&] { rs->MoveFirst(); }));
  EXPECT_EQ(rs->value("oid"), Variant(std::int32_t{2}));
}

// SQLite refuses to write over an open read that is older than somebody else's last change.
TEST_F(ReadRecordset, OpenStreamDoesNotHinderWriting) {
  const auto rs = stream("select nome from t order by oid");
  const auto other = new_connection();
  other->set_ConnectionString(url());
  other->Open();
  other->Execute("update t set nome = 'DOIS' where oid = 2");
  EXPECT_EQ(execute("update t set nome = 'TRÊS' where oid = 3"), 1);
  EXPECT_EQ(rs->value("nome"), Variant("um"));
  rs->MoveNext();
  rs->MoveNext();
  EXPECT_EQ(rs->value("nome"), Variant("três"));
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
  EXPECT_EQ(rows("select nome from t order by oid"), "um DOIS TRÊS");
}

TEST_F(ReadRecordset, MaxRecordsLimitsRows) {
  EXPECT_EQ(snapshot("select oid from t", 2)->RecordCount(), 2);
  EXPECT_EQ(snapshot("select oid from t", 3)->RecordCount(), 3);
  EXPECT_EQ(snapshot("select oid from t", 0)->RecordCount(), 3);
  // Whatever the statement ends with: the limit may have to stand in it.
  for (const char* sql : {"select oid from t order by oid desc -- os últimos", "select oid from t for update",
                          "select oid from t limit 3", "select oid from t union all select oid from t",
                          "select (select max(oid) from t) as m from t where nome in (select nome from t)",
                          "select oid from t;", "select oid from t where nome <> 'limit' /* for */"}) {
    if (std::string_view(sql).ends_with("update") && !on_postgresql()) continue;
    EXPECT_EQ(snapshot(sql, 2)->RecordCount(), 2) << sql;
  }
  EXPECT_EQ(rows("select oid from t order by oid"), "1 2 3");
  const auto rs = updatable("select oid from t order by oid", 1);
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
}

TEST_F(ReadRecordset, EmptyResult) {
  for (const auto& rs : {snapshot("select * from t where oid=9"), stream("select * from t where oid=9"),
                         updatable("select * from t where oid=9")}) {
    EXPECT_EQ(rs->State(), ObjectState::Open);
    EXPECT_TRUE(rs->Eof());
    EXPECT_TRUE(rs->Bof());
    EXPECT_EQ(rs->field_name(1), "nome");
    EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->value("nome"); }));
    EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->MoveNext(); }));
    EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->MoveFirst(); }));
  }
}

TEST_F(ReadRecordset, FindsFieldsByNameAndPosition) {
  const auto rs = snapshot("select oid, nome, nome as Oid from t where oid=2");
  const auto fields = rs->Fields();
  EXPECT_EQ(fields->Count(), 3);
  EXPECT_EQ(fields->Item(std::int32_t{1})->Value(), Variant("dois"));
  EXPECT_EQ(fields->Item("NOME")->Name(), "nome");
  EXPECT_EQ(rs->value("oid"), Variant(std::int32_t{2}));
  EXPECT_EQ(rs->value("oid"), Variant(std::int32_t{2})) << "the first of two fields of one name";
  for (const Variant& none : {Variant(std::int32_t{3}), Variant(std::int32_t{-1}), Variant("outro")}) {
    EXPECT_TRUE(raises(error_number::no_such_field, [&] { fields->Item(none); }));
  }
}

TEST_F(ReadRecordset, RefusesWritingAndUseWhenClosed) {
  const auto rs = snapshot("select * from t");
  EXPECT_TRUE(raises(error_number::not_writable, [&] { rs->AddNew(); }));
  EXPECT_TRUE(raises(error_number::not_writable, [&] { rs->set("nome", "x"); }));
  EXPECT_TRUE(raises(error_number::not_writable, [&] { rs->Delete(); }));
  rs->Close();
  EXPECT_EQ(rs->State(), ObjectState::Closed);
  EXPECT_TRUE(raises(error_number::closed_object, [&] { rs->Close(); }));
  EXPECT_TRUE(raises(error_number::closed_object, [&] { rs->Eof(); }));
  EXPECT_TRUE(raises(error_number::closed_object, [&] { rs->value("nome"); }));
}

TEST_F(ReadRecordset, StatementWithoutResultGivesAClosedRecordset) {
  EXPECT_EQ(snapshot("update t set valor = 2 where oid > 1")->State(), ObjectState::Closed);
  EXPECT_EQ(rows("select count(*) from t where valor = 2"), "2");
}

TEST_F(ReadRecordset, PassesLongTextsAndBytes) {
  const std::string text(20'000'000, 'a');
  execute("create table longa (oid integer primary key, nome text, dado blob)");
  const auto table = conn->AbrirTabela("longa", CursorType::Dynamic, LockType::Optimistic);
  table->AddNew();
  table->set("oid", std::int32_t{50});
  table->set("nome", text);
  table->set("dado", Bytes(20'000'000, std::byte{7}));
  table->Update();
  for (const auto& rs : {snapshot("select nome, dado from longa where oid=50"),
                         stream("select nome, dado from longa where oid=50")}) {
    EXPECT_TRUE(rs->value("nome").get<std::string>() == text);
    EXPECT_EQ(rs->value("dado").get<Bytes>().size(), 20'000'000U);
  }
}

TEST_F(ReadRecordset, SeesChangedTables) {
  const auto before = snapshot("select * from t where oid=1");
  const auto other = new_connection();
  other->set_ConnectionString(url());
  other->Open();
  other->Execute("alter table t add extra varchar(10) default 'novo'");
  const auto after = snapshot("select * from t where oid=1");
  EXPECT_EQ(after->value("extra"), Variant("novo"));
  EXPECT_EQ(after->field_count(), before->field_count() + 1);
}

}  // namespace
}  // namespace pradelis::tests
