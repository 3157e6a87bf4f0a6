#include <gtest/gtest.h>

#include "automation/call_frame.h"
#include "probe.h"
#include "values/date.h"

/// What happens to arguments between a caller's variables and a method's parameters.
namespace pradelis::automation {
namespace {

Variant call(const char* name, std::span<Variant> arguments, std::span<const NamedArgument> named = {}) {
  static Probe probe;
  const ClassTable& table = probe_table();
  const Member& member = *table.find(table.id_of(name).value(), Use::Read);
  return CallFrame(member, {arguments, named}).call(probe);
}

std::int32_t failure_of(const char* name, std::vector<Variant> arguments,
                        std::span<const NamedArgument> named = {}) {
  try {
    call(name, arguments, named);
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}

TEST(Arguments, AreConvertedToTheParametersTypeAndKeepTheirOwn) {
  struct Case {
    const char* member;
    Variant given;
    Variant arrives;
  };
  const Case cases[] = {
      {"Text", 1.5, "1,5"},
      {"Text", true, "Verdadeiro"},
      {"Text", Variant(), ""},
      {"Text", make_date({2026, 3, 5}), "05/03/2026"},
      {"Small", "7", std::int16_t{7}},
      {"Small", 2.5, std::int16_t{2}},
      {"Number", "1.234", 1234},
      {"Number", true, -1},
      {"Number", std::uint8_t{200}, 200},
      {"Any", Variant::null(), Variant::null()},
      {"Any", std::int64_t{5}, std::int64_t{5}},
      {"Any", Variant::missing(), Variant::missing()},
      {"After", "05/03/2026", true},
      {"WithDefault", Variant::missing(), 7},
      {"AnyWithDefault", Variant::missing(), "padrão"},
      {"AnyWithDefault", Variant::null(), Variant::null()},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.member);
    Variant variable = c.given;
    EXPECT_EQ(call(c.member, {&variable, 1}), c.arrives);
    EXPECT_EQ(variable, c.given);
  }
}

TEST(Arguments, ThatDoNotFitAreRefused) {
  const Variant null = Variant::null();
  const Variant missing = Variant::missing();
  EXPECT_EQ(failure_of("Number", {"doze"}), error_number::type_mismatch);
  EXPECT_EQ(failure_of("Number", {null}), error_number::invalid_use_of_null);
  EXPECT_EQ(failure_of("Small", {40000}), error_number::overflow);
  EXPECT_EQ(failure_of("Text", {Variant::Array{1}}), error_number::type_mismatch);
  EXPECT_EQ(failure_of("Number", {missing}), error_number::argument_not_optional);
  EXPECT_EQ(failure_of("Number", {}), error_number::argument_not_optional);
  EXPECT_EQ(failure_of("Any", {}), error_number::argument_not_optional);
  EXPECT_EQ(failure_of("Number", {1, 2}), error_number::wrong_number_of_arguments);
}

TEST(Arguments, WrittenBackTakeExactlyTheParametersType) {
  std::vector<Variant> variables = {"0", 1.25};
  call("Write", variables);
  EXPECT_EQ(variables[0], Variant(std::int16_t{4}));
  EXPECT_EQ(variables[1], Variant("escrito"));

  Variant text = "a";
  EXPECT_EQ(call("Append", {&text, 1}), Variant("a!"));
  EXPECT_EQ(text, Variant("a!"));
  Variant number = 5;
  call("Append", {&number, 1});
  EXPECT_EQ(number, Variant("5!"));
}

TEST(Arguments, WrittenBeforeAFailureStayWritten) {
  std::vector<Variant> variables = {0, Variant(), true};
  EXPECT_THROW(call("Write", variables), Error);
  EXPECT_EQ(variables[0], Variant(std::int16_t{4}));
  EXPECT_EQ(variables[1], Variant("escrito"));

  std::vector<Variant> refused = {"1", "antes", "talvez"};  // the third is no Boolean: nothing runs
  EXPECT_THROW(call("Write", refused), Error);
  EXPECT_EQ(refused, (std::vector<Variant>{"1", "antes", "talvez"}));
}

TEST(Arguments, ByNameFillTheirPlacesWhateverTheirCase) {
  Variant first = "a";
  Variant third = 3.5;
  const NamedArgument both[] = {{"THIRD", &third}, {"first", &first}};
  EXPECT_EQ(call("Join", {}, both), Variant("a-2-3,5"));

  std::vector<Variant> positional = {"a"};
  EXPECT_EQ(call("Join", positional, std::span(both).first(1)), Variant("a-2-3,5"));

  const NamedArgument unknown[] = {{"fourth", &first}};
  EXPECT_EQ(failure_of("Join", {"a"}, unknown), error_number::named_argument_not_found);
  EXPECT_EQ(failure_of("Join", {"a"}, both), error_number::wrong_number_of_arguments);

  Variant step = 0;
  Variant answer;
  const NamedArgument receivers[] = {{"answer", &answer}, {"step", &step}};
  call("Write", {}, receivers);
  EXPECT_EQ(step, Variant(std::int16_t{4}));
  EXPECT_EQ(answer, Variant("escrito"));
}

}  // namespace
}  // namespace pradelis::automation
