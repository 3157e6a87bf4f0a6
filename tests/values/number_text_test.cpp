#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

#include "values/convert.h"

namespace pradelis {
namespace {

struct NumberRow {
  const char* text;
  double number;
};

TEST(ParseNumber, ReadsWhatThePlatformReadsUnderBrazilianSettings) {
  const NumberRow rows[] = {
      {"42", 42},
      {"1,5", 1.5},
      {"1.5", 15},  // the point separates thousands wherever it stands
      {"10.00", 1000},
      {"1.2.3", 123},
      {"1,2.3", 1.23},
      {"5.", 5},
      {"1.234,56", 1234.56},
      {"R$ 1.234,56", 1234.56},
      {"R$1.234,56 R$", 1234.56},
      {"1,5 R$", 1.5},
      {"- R$ 5", -5},
      {"R$ -5", -5},
      {"(5)", -5},
      {"(R$ 5)", -5},
      {"R$ (5)", -5},
      {"(-5)", -5},
      {"(-5", -5},  // the sign is taken for the closing parenthesis
      {"5-", -5},
      {"5 -", -5},
      {"- 5", -5},
      {"5+", 5},
      {"+-5", -5},
      {",5", 0.5},
      {"5,", 5},
      {"0", 0},
      {",0", 0},
      {"007", 7},
      {"1e3", 1000},
      {"1d3", 1000},
      {"1D-3", 0.001},
      {"1,5E+2", 150},
      {"1e5-", -1e5},
      {"1e-400", 0},
      {"&HFF", 255},
      {"&hffff", 65535},
      {"&O17", 15},
      {"-&HFF", 255},  // a sign means nothing before a bit pattern
      {" &HFF ", 255},
      {"\t 7 \r\n", 7},
      {"\u00A0"
       "7\u202F",
       7},
      {"0,1", 0.1},
      {"179769313486231570000", 179769313486231570000.0},
      {"1,7976931348623157e308", std::numeric_limits<double>::max()},
  };
  for (const NumberRow& row : rows) {
    EXPECT_EQ(parse_number(row.text), row.number) << '"' << row.text << '"';
    EXPECT_TRUE(is_numeric(row.text)) << '"' << row.text << '"';
  }
}

TEST(ParseNumber, RefusesTheRest) {
  const char* const texts[] = {"",     " ",   "R$",    "R",     "r$ 5",    "$5",    "7%",     "1,2,3",
                               "-5-",  "--5", "++5",   ".5",    "(5",      "5)",    "()",     "((5))",
                               "1 2",  "1e",  "1e+",   "e5",    "1e5,0",   "1f3",   "R$ 1e3", "&H",
                               "&HFG", "&O8", "&HF,5", "&H1.0", "R$ &HFF", "1e400", "abc",    "5a",
                               "NaN",  "inf", "0x10",  ",",     ",-5",     "- -5",  "\u0665"};
  for (const char* text : texts) {
    EXPECT_EQ(parse_number(text), std::nullopt) << '"' << text << '"';
    EXPECT_FALSE(is_numeric(text)) << '"' << text << '"';
  }
  EXPECT_EQ(parse_number(std::string_view("5\0", 2)), std::nullopt);
}

TEST(ToText, PrintsDoublesAsThePlatformDoes) {
  const struct {
    double number;
    const char* text;
  } rows[] = {
      {0, "0"},
      {-0.0, "0"},
      {1, "1"},
      {-12, "-12"},
      {1.5, "1,5"},
      {0.1 + 0.2, "0,3"},
      {1.0 / 3, "0,333333333333333"},
      {2.0 / 3, "0,666666666666667"},
      {1.0 / 30, "3,33333333333333E-02"},  // 16 digits after the comma would be too many
      {0.05, "0,05"},
      {0.0001, "0,0001"},
      {0.00001, "1E-05"},
      {1234567.891, "1234567,891"},
      {919.9999999999999, "920"},
      {918846313954996.5, "918846313954997"},  // a half goes away from zero here
      {999999999999999, "999999999999999"},
      {999999999999999.9, "1E+15"},
      {1e15, "1E+15"},
      {-1.5e100, "-1,5E+100"},
      {5e-324, "4,94065645841247E-324"},
      {std::numeric_limits<double>::max(), "1,79769313486232E+308"},
      {std::numeric_limits<double>::infinity(), "1,#INF"},
  };
  for (const auto& row : rows) EXPECT_EQ(to_text(row.number), row.text);
}

TEST(FormatNumber, RoundsTheDecimalValueAwayFromZero) {
  const struct {
    double number;
    int decimals;
    const char* text;
  } rows[] = {
      {1234.5, 2, "1.234,50"},
      {1234567.891, 2, "1.234.567,89"},
      {0.5, 0, "1"},
      {2.5, 0, "3"},
      {-2.5, 0, "-3"},
      {1.005, 2, "1,01"},  // the double lies below, the 15 digits shown do not
      {0.005, 2, "0,01"},
      {0.004, 2, "0,00"},
      {-0.004, 2, "-0,00"},  // the sign stays
      {9.999, 2, "10,00"},
      {0.95, 1, "1,0"},
      {0, 2, "0,00"},
      {-0.0, 2, "0,00"},
      {1e20, 1, "100.000.000.000.000.000.000,0"},
      {1e-7, 3, "0,000"},
      {0.1, 20, "0,10000000000000000000"},
  };
  for (const auto& row : rows) EXPECT_EQ(format_number(row.number, row.decimals), row.text);
  EXPECT_EQ(format_number(1234.5, 1, false), "1234,5");
  EXPECT_EQ(format_number(-1234.5, 1, true, true), "(1.234,5)");
}

TEST(Conversions, DoNotDependOnTheLocaleOfTheProcess) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* locale : {"pt_BR.UTF-8", "de_DE.UTF-8", "en_US.UTF-8", "tr_TR.UTF-8", "C.UTF-8", "C"}) {
    if (!std::setlocale(LC_ALL, locale)) continue;
    EXPECT_EQ(parse_number("1.234,56"), 1234.56) << locale;
    EXPECT_EQ(to_text(1234.5), "1234,5") << locale;
    EXPECT_EQ(format_number(1234.5, 2), "1.234,50") << locale;
    EXPECT_EQ(to_text(to_date("5 mar 2009 2:07 pm")), "05/03/2009 14:07:00") << locale;
  }
  std::setlocale(LC_ALL, before.c_str());
}

}  // namespace
}  // namespace pradelis
