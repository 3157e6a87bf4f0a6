#include <gtest/gtest.h>

#include "automation/classes.h"
#include "automation/invoke.h"
#include "tests/support/component_test.h"
#include "values/clock.h"

/// Members of real objects, used by name as a page uses them.
namespace pradelis::automation {
namespace {

class Objects : public tests::ComponentTest {
 protected:
  static Variant use(const ObjectPtr& object, const char* name, Use use, std::vector<Variant> arguments) {
    return invoke(*object, name, use, {arguments});
  }
  static Variant read(const ObjectPtr& object, const char* name, std::vector<Variant> arguments = {}) {
    return use(object, name, Use::Read, std::move(arguments));
  }
  static ObjectPtr object(const ObjectPtr& from, const char* name, std::vector<Variant> arguments = {}) {
    return to_object(read(from, name, std::move(arguments)));
  }
  template <class Action>
  static std::int32_t number_of_failure(Action&& action) {
    return tests::failure_of(std::forward<Action>(action)).number;
  }
  ObjectPtr query(const char* sql, std::int32_t lock = 1) {
    read(crm_, "Executar", {sql, 3, lock});
    return object(crm_, "rs");
  }
};

TEST_F(Objects, FieldsAreReachedByDefaultMembersAndByPosition) {
  const ObjectPtr rs = query("select 5 as n, 'Ana' as nome");
  EXPECT_EQ(default_value(read(crm_, "rs", {"NOME"})), Variant("Ana"));
  EXPECT_EQ(default_value(read(rs, "Fields", {0})), read(object(rs, "fields", {"n"}), "VALUE"));
  EXPECT_EQ(read(object(rs, "Fields", {1}), "Name"), Variant("nome"));
  EXPECT_EQ(read(object(rs, "Fields", {1}), "Type"), Variant(202));
  EXPECT_EQ(read(object(rs, "Fields"), "Count"), Variant(2));
  EXPECT_EQ(number_of_failure([&] { read(rs, "Fields", {"idade"}); }), error_number::no_such_field);
  EXPECT_EQ(number_of_failure([&] { read(rs, "EOF", {"nome"}); }), error_number::wrong_number_of_arguments);
  EXPECT_EQ(number_of_failure([&] { read(crm_, "rs6", {"nome"}); }), error_number::object_not_set);
}

TEST_F(Objects, FieldsAreEnumeratedInTheirOrder) {
  const ObjectPtr fields = object(query("select 1 as a, 2 as b, 3 as c"), "Fields");
  const Elements& elements = table_of(*fields).elements().value();
  std::string names;
  for (std::size_t i = 0; i < elements.count(*fields); ++i) {
    names += to_text(read(to_object(elements.at(*fields, i)), "Name"));
  }
  EXPECT_EQ(names, "abc");
  EXPECT_FALSE(recordset_table().elements());
}

TEST_F(Objects, GetRowsGivesColumnsOfRows) {
  using Array = Variant::Array;
  ObjectPtr rs = query("select 1 as n, 'a' as t union all select 2, 'b' union all select 3, 'c'");
  EXPECT_EQ(read(rs, "GetRows", {2}), Variant(Array{Array{1, 2}, Array{"a", "b"}}));
  EXPECT_EQ(read(rs, "GetRows"), Variant(Array{Array{3}, Array{"c"}}));
  EXPECT_EQ(number_of_failure([&] { read(rs, "GetRows"); }), error_number::no_current_row);
  EXPECT_EQ(read(rs, "GetRows", {-1, 1, "T"}), Variant(Array{Array{"a", "b", "c"}}));
  read(rs, "MoveFirst");
  EXPECT_EQ(read(rs, "GetRows", {1, Variant::missing(), Array{"t", 0}}),
            Variant(Array{Array{"a"}, Array{1}}));
  EXPECT_EQ(number_of_failure([&] { read(rs, "GetRows", {1, 0, 2}); }), error_number::no_such_field);
  EXPECT_EQ(number_of_failure([&] { read(rs, "GetRows", {-2}); }), error_number::invalid_argument);
}

TEST_F(Objects, RowsAreAddedChangedAndDeletedByName) {
  const ObjectPtr conn = object(crm_, "QLCConn");
  const ObjectPtr table = object(conn, "AbrirTabela", {"crm_produtos", 2, 3});
  read(table, "AddNew");
  use(table, "Fields", Use::Let, {"oid", 90001});
  use(table, "Fields", Use::Let, {"nome", "Serra"});
  read(table, "Update");
  read(table, "Close");
  EXPECT_EQ(read(table, "State"), Variant(0));

  const ObjectPtr rs = query("select nome from crm_produtos", 3);
  EXPECT_EQ(read(rs, "EOF"), Variant(false));
  use(crm_, "rs", Use::Let, {"nome", "Serrote"});
  read(rs, "Update");
  EXPECT_EQ(default_value(read(query("select nome from crm_produtos"), "Fields", {"nome"})),
            Variant("Serrote"));

  std::vector<Variant> statement = {"delete from crm_produtos where nome = 'Serrote'", Variant()};
  invoke(*object(conn, "Conexao"), "Execute", Use::Read, {statement});
  EXPECT_EQ(statement[1], Variant(1));
  EXPECT_EQ(read(query("select nome from crm_produtos"), "EOF"), Variant(true));
}

TEST_F(Objects, VariablesTakeValuesAndReferencesApart) {
  const ObjectPtr rs = query("select 'Ana' as nome");
  const Variant field = read(rs, "Fields", {"nome"});
  use(crm_, "sValor", Use::Let, {field});
  EXPECT_EQ(read(crm_, "sValor"), Variant("Ana"));
  use(crm_, "sValor", Use::Set, {field});
  EXPECT_EQ(read(crm_, "sValor"), field);
  use(crm_, "sValor", Use::Let, {Variant::null()});

  use(crm_, "rs2", Use::Set, {rs});
  EXPECT_EQ(object(crm_, "rs2"), rs);
  use(crm_, "rs2", Use::Set, {ObjectPtr()});
  EXPECT_EQ(read(crm_, "rs2"), Variant(ObjectPtr()));
  EXPECT_EQ(number_of_failure([&] { use(crm_, "rs2", Use::Set, {ObjectPtr(crm_)}); }),
            error_number::type_mismatch);
  EXPECT_EQ(number_of_failure([&] { use(crm_, "rs2", Use::Let, {rs}); }), error_number::no_such_member);
  EXPECT_EQ(number_of_failure([&] { use(crm_, "QLCConn", Use::Set, {ObjectPtr(crm_)}); }),
            error_number::no_such_member);

  use(crm_, "PValorNegocio", Use::Let, {"7"});
  EXPECT_EQ(read(crm_, "PValorNegocio"), Variant(std::uint8_t{1}));
}

TEST_F(Objects, OnlyWhatIsExactlyTrueAsksForTheTimeOfDay) {
  replace_clock([] { return make_date({2009, 3, 5, 14, 7, 33}); });
  EXPECT_EQ(read(crm_, "DataAgora"), Variant("05/03/2009 14:07:33"));
  EXPECT_EQ(read(crm_, "DataAgora", {true}), Variant("05/03/2009 14:07:33"));
  EXPECT_EQ(read(crm_, "DataAgora", {1}), Variant("05/03/2009"));
  EXPECT_EQ(read(crm_, "DataAgora", {"Verdadeiro"}), Variant("05/03/2009"));
  replace_clock({});
}

}  // namespace
}  // namespace pradelis::automation
