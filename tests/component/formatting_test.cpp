#include "tests/support/component_test.h"
#include "values/clock.h"

namespace pradelis::tests {
namespace {

class Formatting : public ComponentTest {
 protected:
  ~Formatting() override { replace_clock({}); }
};

TEST_F(Formatting, NumbersAreReadTheBrazilianWayAndCleaned) {
  const struct {
    Variant typed;
    double number;
    std::string cleaned;
  } cases[] = {
      {"1.234,56", 1234.56, "1234,56"},
      {"1234.5", 1234.5, "1234,5"},
      {"1.500", 1500, "1500"},
      {"12.", 12, "12,"},
      {"0.5", 0.5, "0,5"},
      {"10", 10, "10"},
      {"1.000.000", 1000000, "1000000"},
      {"1,5", 1.5, "1,5"},
      {"1.234.5", 1234.5, "1234,5"},
      {"5.", 5, "5"},
      {"-0.25", -0.25, "-0,25"},
      {"ab", 0, "0"},
      {"", 0, "0"},
      {Variant::null(), 0, "0"},
      {Variant::missing(), 0, "0"},
      {Variant(2.75), 2.75, "2,75"},
      {Variant(std::int32_t{1500}), 1500, "1500"},
  };
  for (const auto& expected : cases) {
    Variant value = expected.typed;
    const Variant number = crm_->FormataNumero(value);
    EXPECT_EQ(number, Variant(expected.number)) << expected.cleaned;
    EXPECT_EQ(value, Variant(expected.cleaned));
  }
}

TEST_F(Formatting, ANumericValueWhoseTextIsNoNumberFailsUnchanged) {
  Variant truth = true;
  const Failure failure = failure_of([&] { crm_->FormataNumero(truth); });
  EXPECT_EQ(failure.number, error_number::type_mismatch);
  EXPECT_EQ(failure.source, "");
}

TEST_F(Formatting, IdentifiersKeepNullAndRoundHalvesToEven) {
  EXPECT_TRUE(crm_->FormataOid(Variant::null()).is_null());
  EXPECT_EQ(crm_->FormataOid("42"), Variant(std::int32_t{42}));
  EXPECT_EQ(crm_->FormataOid(2.5), Variant(std::int32_t{2}));
  EXPECT_EQ(crm_->FormataOid(3.5), Variant(std::int32_t{4}));
  EXPECT_EQ(failure_of([&] { crm_->FormataOid("x"); }).number, error_number::type_mismatch);
}

TEST_F(Formatting, AmountsAreGroupedWithTwoDecimals) {
  const struct {
    std::string given, formatted;
  } cases[] = {{"1234.5", "1.234,50"},
               {"1.234,5", "1.234,50"},
               {"1234,005", "1.234,01"},
               {"0", "0,00"},
               {",5", "0,50"},
               {"-1234567,891", "-1.234.567,89"},
               {"1.234", "1.234,00"},
               {"sem valor", "sem valor"},
               {"", ""}};
  for (const auto& expected : cases) {
    std::string value = expected.given;
    EXPECT_EQ(crm_->converte(value), expected.formatted);
    EXPECT_EQ(value, expected.formatted);
  }
}

TEST_F(Formatting, TheTimeIsAddedOnlyForExactlyTrue) {
  replace_clock(
      [] { return make_date({.year = 2009, .month = 3, .day = 5, .hour = 14, .minute = 7, .second = 33}); });
  EXPECT_EQ(crm_->DataAgora(), "05/03/2009 14:07:33");
  EXPECT_EQ(crm_->DataAgora(std::int16_t{-1}), "05/03/2009 14:07:33");
  for (const Variant& other : {Variant(false), Variant(std::int16_t{1}), Variant("Verdadeiro"),
                               Variant::null(), Variant::missing(), Variant()}) {
    EXPECT_EQ(crm_->DataAgora(other), "05/03/2009");
  }
  replace_clock([] { return make_date({.year = 2009, .month = 3, .day = 1}); });
  EXPECT_EQ(crm_->DataAgora(), "01/03/2009 00:00:00");
}

TEST_F(Formatting, OnlyQuotesAreDoubled) {
  EXPECT_EQ(crm_->PrepararVariavel("O'Brien \"%_\\''"), "O''Brien \"%_\\''''");
  EXPECT_EQ(crm_->PrepararVariavel(""), "");
  EXPECT_EQ(crm_->PrepararVariavel(std::int32_t{12}), "12");
  EXPECT_EQ(failure_of([&] { crm_->PrepararVariavel(Variant::null()); }).number,
            error_number::invalid_use_of_null);
}

}  // namespace
}  // namespace pradelis::tests
