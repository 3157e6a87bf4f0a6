#include <limits>

#include "tests/dataaccess/database_fixture.h"
#include "values/date.h"

namespace pradelis::tests {
namespace {

class TableRecordset : public Database {
 protected:
  TableRecordset() {
    execute(
        "create table t (oid integer primary key, nome varchar(30), valor double, quando datetime, dia date, "
        "numero integer, pequeno smallint, ativo bit, dado blob)");
    execute("insert into t (oid, nome, valor, numero) values (1, 'um', 1.5, 10), (2, 'dois', null, 20)");
    execute("create table par (a integer, b integer, nome text, primary key (a, b))");
    execute("insert into par values (1, 1, 'x'), (1, 2, 'y')");
    execute("create table solta (nome text, n integer)");
    execute("insert into solta values ('a', 1), ('a', 2)");
    execute("create view v as select * from t");
    other->set_ConnectionString(url());
    other->Open();
  }

  ConnectionPtr other = new_connection();
};

TEST_F(TableRecordset, AddsTheColumnsThatWereSet) {
  const auto rs = conn->AbrirTabela("t", CursorType::Dynamic, LockType::Optimistic);
  rs->AddNew();
  EXPECT_TRUE(rs->value("nome").is_null());
  rs->set("OID", std::int32_t{7});
  rs->set("Nome", "it's");
  rs->set("nome", "sete");
  rs->Update();
  EXPECT_EQ(rs->value("nome"), Variant("sete"));
  rs->set("nome", "SETE");
  rs->Update();
  rs->AddNew();
  rs->set("nome", "oito");
  rs->set("oid", std::int32_t{8});
  rs->AddNew();  // saves the one before
  rs->CancelUpdate();
  rs->Close();
  EXPECT_EQ(rows("select nome from t where oid > 2 order by oid"), "SETE oito");
  EXPECT_EQ(rows("select valor from t where oid = 7"), "null");
}

TEST_F(TableRecordset, AddsARowOfDefaults) {
  if (!numbers_rows()) GTEST_SKIP() << "the key has no default";
  const auto rs = updatable("select nome from t");
  rs->AddNew();
  rs->Update();
  EXPECT_EQ(rows("select count(*) from t"), "3");
  rs->set("nome", "x");
  EXPECT_TRUE(raises(error_number::not_writable, "chave", [&] { rs->Update(); }));
}

TEST_F(TableRecordset, ReadsNothingUntilARowIsAskedFor) {
  const auto rs = updatable("select oid, nome from t where oid = 5");
  execute("insert into t (oid, nome) values (5, 'cinco')");
  EXPECT_EQ(rs->value("nome"), Variant("cinco"));
}

TEST_F(TableRecordset, ChangesTheCurrentRowByAKeyThatIsNotSelected) {
  const char* const statements[] = {
      "select nome from t where oid=2",
      "Select nome from t x where x.oid = 2 order by x.nome;",
      "select * from t where oid=2",
      "select t.* from t where nome like 'd%'",
      on_postgresql() ? "select T.nome from public.t where 2=oid" : "select T.nome from main.t where 2=oid",
      on_postgresql() ? "select nome, valor from \"t\" as \"a b\" where oid in (2)"
                      : "select nome, valor from [t] as \"a b\" where oid in (2)",
  };
  for (const char* sql : statements) {
    const auto rs = updatable(sql);
    const std::size_t fields = rs->field_count();
    rs->set("nome", "d2");
    EXPECT_EQ(rs->value("nome"), Variant("d2"));
    rs->Update();
    EXPECT_EQ(rows("select nome from t order by oid"), "um d2") << sql;
    EXPECT_EQ(rs->field_count(), fields);
    rs->set("nome", "dois");
    rs->Update();
    EXPECT_EQ(rows("select nome from t order by oid"), "um dois") << sql;
  }
}

TEST_F(TableRecordset, ChangesAnEmptyTextThatWasReadAlone) {
  execute("insert into t (oid, nome) values (3, '')");
  const auto rs = updatable("select nome from t where oid = 3");
  rs->set("nome", "agora sim");
  rs->Update();
  EXPECT_EQ(rows("select nome from t where oid = 3"), "agora sim");
}

TEST_F(TableRecordset, ChangesRowsOfCompoundKeysAndOfNone) {
  auto rs = updatable("select nome from par where b = 2");
  rs->set("nome", "Y");
  rs->Update();
  EXPECT_EQ(rows("select nome from par order by b"), "x Y");

  rs = updatable("select b from par where b = 2");
  rs->set("b", std::int32_t{3});
  rs->Update();
  rs->set("b", std::int32_t{4});
  rs->Update();
  EXPECT_EQ(rows("select b from par order by b"), "1 4");

  if (!numbers_rows()) return;
  rs = updatable("select * from solta where n = 2");
  rs->set("nome", "b");
  rs->Update();
  EXPECT_EQ(rows("select nome from solta order by n"), "a b");
}

TEST_F(TableRecordset, WalksAndChangesManyRows) {
  execute("delete from t");
  execute(
      "with recursive c(n) as (select 1 union all select n+1 from c where n<200) "
      "insert into t (oid, numero) select n, n from c");
  const auto rs = updatable("select numero from t order by oid");
  for (; !rs->Eof(); rs->MoveNext()) rs->set("numero", to_int32(rs->value("numero")) + 1000);
  EXPECT_EQ(rows("select count(*) from t where numero = oid + 1000"), "200");
  rs->MoveFirst();
  EXPECT_EQ(rs->value("numero"), Variant(std::int32_t{1001}));
  EXPECT_EQ(rs->RecordCount(), -1);
}

TEST_F(TableRecordset, RefusesToOverwriteSomebodyElsesChange) {
  const auto rs = updatable("select * from t where oid = 1");
  EXPECT_FALSE(rs->Eof());
  other->Execute("update t set nome = 'outro', numero = 11 where oid = 1");
  rs->set("nome", "meu");
  rs->set("valor", 9.5);
  EXPECT_TRUE(raises(error_number::changed_by_other, "tabela t", [&] { rs->Update(); }));
  EXPECT_EQ(rows("select nome || valor from t where oid = 1"), "outro1.5");
  rs->CancelUpdate();
  rs->set("valor", 2.5);  // a column that nobody else changed
  rs->Update();
  EXPECT_EQ(rows("select valor from t where oid = 1"), "2,5");
}

TEST_F(TableRecordset, RefusesToWriteARemovedRow) {
  const auto rs = updatable("select * from t where oid = 2");
  EXPECT_TRUE(rs->value("valor").is_null());
  other->Execute("delete from t where oid = 2");
  rs->set("valor", 1.0);
  EXPECT_TRUE(raises(error_number::changed_by_other, [&] { rs->Update(); }));
  EXPECT_TRUE(raises(error_number::changed_by_other, [&] { rs->Delete(); }));
}

TEST_F(TableRecordset, SetCountsAsChanged) {
  const auto rs = updatable("select nome from t where oid = 1");
  EXPECT_FALSE(rs->Eof());
  other->Execute("update t set nome = 'outro' where oid = 1");
  rs->Update();  // nothing set: nothing written, nothing compared
  rs->set("nome", "um");
  EXPECT_TRUE(raises(error_number::changed_by_other, [&] { rs->Update(); }));
}

TEST_F(TableRecordset, ComparesOldValuesOfEveryType) {
  execute("update t set quando='2026-01-02T03:04:05', dia='2026-01-02', ativo='1', dado=x'0102' where oid=1");
  const auto rs = updatable("select * from t where oid = 1");
  for (const char* field : {"nome", "valor", "quando", "dia", "numero", "pequeno", "ativo", "dado"}) {
    const Variant old = rs->value(field);
    rs->set(field, Variant::null());
    rs->Update();
    rs->set(field, old);
    rs->Update();
    EXPECT_EQ(rs->value(field), old) << field;
  }
}

TEST_F(TableRecordset, DeletesTheCurrentRow) {
  const auto rs = updatable("select nome from t order by oid");
  EXPECT_FALSE(rs->Eof());
  rs->set("nome", "x");
  rs->Delete();
  rs->Update();
  EXPECT_EQ(rows("select nome from t"), "dois");
  EXPECT_FALSE(rs->Eof());
  EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->value("nome"); }));
  EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->set("nome", "y"); }));
  EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->Delete(); }));
  rs->MoveNext();
  EXPECT_EQ(rs->value("nome"), Variant("dois"));
}

TEST_F(TableRecordset, EmptyResultTakesNoValuesButAnUpdate) {
  const auto rs = updatable("select * from t where oid = 99");
  rs->Update();
  EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->set("nome", "x"); }));
  EXPECT_TRUE(raises(error_number::no_current_row, [&] { rs->Delete(); }));
  rs->Update();
  rs->AddNew();
  rs->set("oid", std::int32_t{99});
  rs->Update();
  EXPECT_FALSE(rs->Eof());
  rs->MoveNext();
  EXPECT_TRUE(rs->Eof());
}

TEST_F(TableRecordset, OtherStatementsAreReadOnly) {
  const char* const statements[] = {
      "select t.nome from t, par",
      "select max(nome) from t",
      "select distinct nome from t",
      "select nome from t group by nome",
      "select nome from t union select nome from solta",
      "select nome || 'x' as nome from t",
      "select t.nome from t join par on a = oid",
      "select nome from (select nome from t) s",
      "select nome from t where oid=1 except select 'x'",
  };
  for (const char* sql : statements) {
    const auto rs = updatable(sql);
    EXPECT_FALSE(rs->Eof()) << sql;
    EXPECT_TRUE(raises(error_number::not_writable, [&] { rs->set(rs->field_name(0), "x"); })) << sql;
    EXPECT_TRUE(raises(error_number::not_writable, [&] { rs->AddNew(); })) << sql;
    EXPECT_TRUE(raises(error_number::not_writable, [&] { rs->Delete(); })) << sql;
  }
  const auto view = updatable("select nome from v");
  view->set("nome", "x");
  EXPECT_TRUE(raises(error_number::not_writable, "chave", [&] { view->Update(); }));
}

TEST_F(TableRecordset, ConvertsValuesToTheColumnsType) {
  if (!keeps_any_type()) GTEST_SKIP() << "only SQLite tells how a value is stored";
  const Date moment = make_date({.year = 2026, .month = 3, .day = 5, .hour = 14, .minute = 7, .second = 33});
  const struct {
    const char* field;
    Variant value;
    const char* stored;  // as SQLite shows it with its type
  } cases[] = {
      {"numero", "1.000", "integer 1000"},
      {"numero", 2.5, "integer 2"},
      {"numero", true, "integer -1"},
      {"pequeno", std::int32_t{-7}, "integer -7"},
      {"valor", "1.234,56", "real 1234.56"},
      {"valor", std::int32_t{3}, "real 3.0"},
      {"quando", "5/3/2026", "text 2026-03-05 00:00:00"},
      {"quando", "05/03/2026 14:07:33", "text 2026-03-05 14:07:33"},
      {"quando", "2026-03-05", "text 2026-03-05 00:00:00"},
      {"quando", moment, "text 2026-03-05 14:07:33"},
      {"quando", Date{moment.serial + 0.25 / 86400}, "text 2026-03-05 14:07:33.250"},
      {"quando", "", "null null"},
      {"dia", moment, "text 2026-03-05"},
      {"nome", std::int32_t{12}, "text 12"},
      {"nome", 1.5, "text 1,5"},
      {"nome", moment, "text 05/03/2026 14:07:33"},
      {"nome", "", "text "},
      {"nome", "maçã 😀", "text maçã 😀"},
      {"nome", Variant(), "null null"},
      {"nome", Variant::null(), "null null"},
      {"ativo", std::int32_t{5}, "integer 1"},
      {"ativo", "Falso", "integer 0"},
      {"dado", Bytes{std::byte{65}}, "blob A"},
      {"dado", Bytes{}, "blob "},
  };
  const auto rs = updatable("select * from t where oid = 1");
  for (const auto& one : cases) {
    rs->set(one.field, one.value);
    rs->Update();
    const std::string stored = std::string("select typeof(") + one.field + ") || ' ' || coalesce(cast(" +
                               one.field + " as text), 'null') from t where oid = 1";
    EXPECT_EQ(rows(stored), one.stored) << one.field;
  }
}

TEST_F(TableRecordset, RefusesValuesThatDoNotFit) {
  const struct {
    const char* field;
    Variant value;
  } cases[] = {
      {"numero", "abc"},
      {"numero", ""},
      {"numero", 3e9},
      {"numero", "1,2,3"},
      {"pequeno", std::int32_t{40000}},
      {"valor", "doze"},
      {"valor", ""},
      {"quando", "31/2/2026"},
      {"quando", "ontem"},
      {"quando", 1e9},
      {"nome", "\xFF"},
      {"nome", "\xED\xA0\x80"},
      {"nome", Bytes{std::byte{1}}},
      {"ativo", "talvez"},
      {"dado", "texto"},
      {"dado", std::int32_t{1}},
      {"nome", Variant::missing()},
      {"nome", Variant::Array{}},
      {"numero", ObjectPtr{}},
  };
  const auto rs = updatable("select * from t where oid = 1");
  rs->set("valor", 7.0);
  for (const auto& one : cases) {
    EXPECT_TRUE(raises(error_number::value_does_not_fit, one.field, [&] { rs->set(one.field, one.value); }))
        << one.field;
  }
  EXPECT_EQ(rs->value("nome"), Variant("um")) << "a refused value leaves the field as it was";
  rs->Update();
  EXPECT_EQ(rows("select valor from t where oid = 1"), "7");
  EXPECT_EQ(rows("select nome from t where oid = 1"), "um");
}

TEST_F(TableRecordset, ReportsRefusedRowsAndKeepsNothing) {
  execute("create unique index unico on t (nome)");
  const auto rs = conn->AbrirTabela("T", CursorType::Dynamic, LockType::Optimistic);
  rs->AddNew();
  rs->set("nome", "um");
  EXPECT_TRUE(raises(error_number::constraint_refused, "insert into T (nome)", [&] { rs->Update(); }));
  EXPECT_EQ(rows("select count(*) from t"), "2");
  rs->set("nome", "outro");
  rs->set("oid", std::int32_t{3});
  rs->Update();
  EXPECT_EQ(rows("select count(*) from t"), "3");
}

TEST_F(TableRecordset, OpensTablesByNameOnly) {
  EXPECT_TRUE(raises(error_number::no_such_table, "nada",
                     [&] { conn->AbrirTabela("nada", CursorType::Dynamic, LockType::Optimistic); }));
  for (const char* name : {"t where 1=1", "", "t; drop table t", "(select 1)", "t.", "'t'"}) {
    EXPECT_TRUE(raises(error_number::wrong_statement, [&] {
      conn->AbrirTabela(name, CursorType::Dynamic, LockType::Optimistic);
    })) << name;
  }
}

}  // namespace
}  // namespace pradelis::tests
