#include "values/convert.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "values/date.h"
#include "values/error.h"

namespace pradelis {
namespace {

/// The number of the error that `action` raises, or 0.
template <class Action>
std::int32_t error_of(Action action) {
  try {
    action();
    return 0;
  } catch (const Error& error) {
    return error.number();
  }
}

TEST(Convert, RoundsHalvesToEven) {
  const struct {
    double number;
    std::int32_t rounded;
  } rows[] = {{0.5, 0},    {1.5, 2}, {2.5, 2}, {-0.5, 0},  {-1.5, -2},
              {-2.5, -2},  {2.4, 2}, {2.6, 3}, {-2.6, -3}, {0.49999999999999994, 0},
              {254.5, 254}};
  for (const auto& row : rows) {
    EXPECT_EQ(to_int16(row.number), row.rounded);
    EXPECT_EQ(to_int32(row.number), row.rounded);
    EXPECT_EQ(to_int64(row.number), row.rounded);
    if (row.rounded >= 0) {
      EXPECT_EQ(to_uint8(row.number), row.rounded);
    }
  }
}

TEST(Convert, RoundsTextsByTheirDigits) {
  const struct {
    const char* text;
    std::int32_t rounded;
  } rows[] = {{"0,5", 0},
              {"1,5", 2},
              {"2,5", 2},
              {"-2,5", -2},
              {"2,50000000000000000000000001", 3},  // a double would not see the last digit
              {"0,06", 0},
              {"6e-5", 0},
              {"9,9e-1", 1},
              {"25e-1", 2},
              {"1e3", 1000},
              {"&HFF", 255}};
  for (const auto& row : rows) {
    EXPECT_EQ(to_int32(row.text), row.rounded) << row.text;
  }
  EXPECT_EQ(to_int16("&HFFFF"), -1);
  EXPECT_EQ(to_int32("&HFFFF"), 65535);
  EXPECT_EQ(to_int32("&HFFFFFFFF"), -1);
  EXPECT_EQ(to_int64("&HFFFFFFFF"), 4294967295);
  EXPECT_EQ(to_uint8("&HFF"), 255);
  EXPECT_EQ(to_int64("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(to_int64("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(Convert, OverflowsAtTheLimitsOfTheTarget) {
  EXPECT_EQ(to_int16(32767.4), 32767);
  EXPECT_EQ(to_int16(-32768.5), -32768);
  EXPECT_EQ(to_int32(2147483647.4), 2147483647);
  EXPECT_EQ(to_uint8(255.4), 255);
  EXPECT_EQ(to_uint8("-0,4"), 0);
  const auto overflow = error_number::overflow;
  EXPECT_EQ(error_of([] { to_int16(32767.5); }), overflow);
  EXPECT_EQ(error_of([] { to_int16(std::int32_t{32768}); }), overflow);
  EXPECT_EQ(error_of([] { to_int16("32767,5"); }), overflow);
  EXPECT_EQ(error_of([] { to_int16("&H10000"); }), overflow);
  EXPECT_EQ(error_of([] { to_int32(2147483647.5); }), overflow);
  EXPECT_EQ(error_of([] { to_int32("-2147483649"); }), overflow);
  EXPECT_EQ(error_of([] { to_int32("1e300"); }), overflow);
  EXPECT_EQ(error_of([] { to_int64(9223372036854775808.0); }), overflow);
  EXPECT_EQ(error_of([] { to_int64("9223372036854775808"); }), overflow);
  EXPECT_EQ(error_of([] { to_uint8(-1.0); }), overflow);
  EXPECT_EQ(error_of([] { to_uint8(std::int32_t{256}); }), overflow);
  EXPECT_EQ(error_of([] { to_double("1e400"); }), overflow);
  EXPECT_EQ(error_of([] { to_double("&HFFFFFFFF"); }), overflow);
  EXPECT_EQ(error_of([] { to_date(2958466.0); }), overflow);
  EXPECT_EQ(error_of([] { to_int32(std::numeric_limits<double>::quiet_NaN()); }), overflow);
}

TEST(Convert, TakesEveryTypeToEveryOther) {
  const Variant date = Date{39877.5};
  EXPECT_EQ(to_int32(date), 39878);
  EXPECT_EQ(to_double(date), 39877.5);
  EXPECT_EQ(to_text(date), "05/03/2009 12:00:00");
  EXPECT_TRUE(to_boolean(date));
  EXPECT_EQ(to_date(39877.5), Date{39877.5});
  EXPECT_EQ(to_date(true), Date{-1});
  EXPECT_EQ(to_date("5/3/2009"), Date{39877});
  EXPECT_EQ(to_int32(true), -1);
  EXPECT_EQ(to_uint8(true), 255);
  EXPECT_EQ(to_double(false), 0);
  EXPECT_TRUE(to_boolean(0.5));
  EXPECT_FALSE(to_boolean(std::int16_t{0}));
  EXPECT_EQ(to_text(std::uint8_t{7}), "7");
  EXPECT_EQ(to_text(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(to_text(Variant(1.5)), "1,5");
}

TEST(Convert, KnowsTheNamesOfBooleans) {
  EXPECT_EQ(to_text(Variant(true)), "Verdadeiro");
  EXPECT_EQ(to_text(Variant(false)), "Falso");
  for (const char* text : {"Verdadeiro", "VERDADEIRO", "true", "#TRUE#", "1", "-0,5", "R$ 3"}) {
    EXPECT_TRUE(to_boolean(text)) << text;
  }
  for (const char* text : {"falso", "False", "#FALSE#", "0", "0,00"}) EXPECT_FALSE(to_boolean(text)) << text;
  for (const char* text : {"", "sim", "não", " Falso", "#true"}) {
    EXPECT_EQ(error_of([&] { to_boolean(text); }), error_number::type_mismatch) << text;
  }
}

TEST(Convert, TakesEmptyForNothing) {
  const Variant empty;
  EXPECT_FALSE(to_boolean(empty));
  EXPECT_EQ(to_int32(empty), 0);
  EXPECT_EQ(to_double(empty), 0);
  EXPECT_EQ(to_date(empty), Date{0});
  EXPECT_EQ(to_text(empty), "");
  EXPECT_TRUE(is_numeric(empty));
  EXPECT_FALSE(is_date(empty));
}

TEST(Convert, RefusesWhatHasNoValue) {
  const struct {
    Variant value;
    std::int32_t error;
  } rows[] = {
      {Variant::null(), error_number::invalid_use_of_null},
      {Variant::missing(), error_number::type_mismatch},
      {Bytes(3), error_number::type_mismatch},
      {Variant::Array(2), error_number::type_mismatch},
      {ObjectPtr(), error_number::type_mismatch},
  };
  for (const auto& row : rows) {
    const Variant& value = row.value;
    EXPECT_EQ(error_of([&] { to_boolean(value); }), row.error);
    EXPECT_EQ(error_of([&] { to_uint8(value); }), row.error);
    EXPECT_EQ(error_of([&] { to_int32(value); }), row.error);
    EXPECT_EQ(error_of([&] { to_double(value); }), row.error);
    EXPECT_EQ(error_of([&] { to_date(value); }), row.error);
    EXPECT_EQ(error_of([&] { to_text(value); }), row.error);
    EXPECT_FALSE(is_numeric(value));
    EXPECT_FALSE(is_date(value));
  }
  EXPECT_EQ(error_of([] { to_int32("abc"); }), error_number::type_mismatch);
  EXPECT_EQ(error_of([] { to_date("abc"); }), error_number::type_mismatch);
}

TEST(Convert, GivesTheObjectHeld) {
  const auto object = std::make_shared<Object>();
  EXPECT_EQ(to_object(Variant(object)), object);
  EXPECT_EQ(error_of([] { to_object(ObjectPtr()); }), error_number::object_not_set);
  EXPECT_EQ(error_of([] { to_object("x"); }), error_number::type_mismatch);
  EXPECT_EQ(error_of([] { to_object(Variant()); }), error_number::type_mismatch);
}

TEST(AppendText, PassesOverNullOnly) {
  std::string text = "a";
  append_text(text, Variant::null());
  append_text(text, Variant());
  append_text(text, std::int32_t{-7});
  append_text(text, "b");
  EXPECT_EQ(text, "a-7b");
  EXPECT_EQ(error_of([&] { append_text(text, Variant::missing()); }), error_number::type_mismatch);
  EXPECT_EQ(text, "a-7b");
}

TEST(Variant, GivesOnlyTheTypeHeld) {
  const Variant value = std::int32_t{5};
  EXPECT_EQ(value.get<std::int32_t>(), 5);
  EXPECT_EQ(error_of([&] { value.get<double>(); }), error_number::type_mismatch);
  EXPECT_NE(value, Variant(std::int16_t{5}));
  EXPECT_NE(Variant::null(), Variant());
}

TEST(PlatformText, IsPortuguese) {
  EXPECT_EQ(platform_text(6), "Estouro");
  EXPECT_EQ(platform_text(13), "Tipos incompatíveis");
  EXPECT_EQ(platform_text(12345), "Erro definido pelo aplicativo ou pelo objeto");
  try {
    raise(94);
  } catch (const Error& error) {
    EXPECT_EQ(error.number(), 94);
    EXPECT_EQ(error.description(), "Uso de Null inválido");
    EXPECT_EQ(error.source(), "");
  }
}

}  // namespace
}  // namespace pradelis
