#include <gtest/gtest.h>

#include <compare>
#include <limits>
#include <string>

#include "values/clock.h"
#include "values/convert.h"
#include "values/date.h"
#include "values/error.h"

namespace pradelis {
namespace {

/// Holds the clock still, since a text without a year means the current one.
class DateText : public ::testing::Test {
 protected:
  void SetUp() override {
    replace_clock([] { return make_date({2009, 3, 5, 14, 7, 33, 0}); });
  }
  void TearDown() override { replace_clock({}); }
};

TEST_F(DateText, ReadsDayFirstAndThenTheOtherOrders) {
  const struct {
    const char* text;
    const char* date;
  } rows[] = {
      {"5/3/2009", "05/03/2009"},
      {"05-03-2009", "05/03/2009"},
      {"5 3 2009", "05/03/2009"},
      {" 5/3/2009 ", "05/03/2009"},
      {"31/12/2024", "31/12/2024"},
      {"12/31/2024", "31/12/2024"},
      {"2024-12-31", "31/12/2024"},
      {"2024-05-06", "06/05/2024"},  // a year in front brings the month next
      {"2024/31/12", "31/12/2024"},
      {"31/2/24", "24/02/1931"},  // only year, month, day makes a date of it
      {"29/2/2024", "29/02/2024"},
      {"1/1/00", "01/01/2000"},
      {"1/1/29", "01/01/2029"},
      {"1/1/30", "01/01/1930"},
      {"1/1/99", "01/01/1999"},
      {"1/1/100", "01/01/100"},
      {"31/12/9999", "31/12/9999"},
      {"31 dez 2024", "31/12/2024"},
      {"31-DEZ-2024", "31/12/2024"},
      {"31 dez. 2024", "31/12/2024"},
      {"1 março 2024", "01/03/2024"},
      {"1 MARÇO 2024", "01/03/2024"},
      {"dez 31, 2024", "31/12/2024"},
      {"2024 dez 31", "31/12/2024"},
      {"terça-feira, 31 dezembro 2024", "31/12/2024"},
      {"sáb, 1 jun 2024", "01/06/2024"},
      {"31/12", "31/12/2009"},
      {"12/31", "31/12/2009"},
      {"dez 24", "24/12/2009"},
      {"12/2024", "01/12/2024"},
      {"dez 2024", "01/12/2024"},
      {"2024 dez", "01/12/2024"},
      {"14:07", "14:07:00"},
      {"14:07:33", "14:07:33"},
      {"14.07", "14:07:00"},
      {"0:00", "00:00:00"},
      {"2:07 PM", "14:07:00"},
      {"2:07pm", "14:07:00"},
      {"2 p", "14:00:00"},
      {"12 am", "00:00:00"},
      {"12 pm", "12:00:00"},
      {"5/3/2009 14:07:33", "05/03/2009 14:07:33"},
      {"14:07:33 5/3/2009", "05/03/2009 14:07:33"},
      {"5/3/2009, 14:07", "05/03/2009 14:07:00"},
      {"2024-12-31 23:59:59", "31/12/2024 23:59:59"},
      {"31 dez 2024 2 pm", "31/12/2024 14:00:00"},
      {"2 pm 31/12/2024", "31/12/2024 14:00:00"},
      {"5/3/2009 00:00:00", "05/03/2009"},
      {"29/12/1899 6:00", "29/12/1899 06:00:00"},
  };
  for (const auto& row : rows) {
    const auto date = parse_date(row.text);
    ASSERT_TRUE(date) << '"' << row.text << '"';
    EXPECT_EQ(to_text(*date), row.date) << '"' << row.text << '"';
    EXPECT_TRUE(is_date(row.text));
  }
}

TEST_F(DateText, RefusesWhatIsNoDate) {
  const char* const texts[] = {"",
                               " ",
                               "x",
                               "31/2/2024",
                               "29/2/2023",
                               "32/1/2024",
                               "0/1/2024",
                               "13/13/2024",
                               "1/1/10000",
                               "45000",
                               "1.5e3",
                               "5/3/2009 24:00",
                               "5/3/2009 14:60",
                               "14:07:60",
                               "5/3/2009/1",
                               "5//3/2009/1",
                               "5/3/",
                               "5/3/2009 14:",
                               "14:",
                               ":14",
                               "/5/3/2009",
                               "5/3/2009,",
                               "abc 5 2009",
                               "am",
                               "2 pm am",
                               "5/3 pm/2009",
                               "1 2 3 4",
                               "1 2 3 4 5",
                               "1 2 3 4 5 6 7",
                               "5/3/2009 1:2:3:4",
                               "5/3/2009T14:07",
                               "5;3;2009"};
  for (const char* text : texts) {
    EXPECT_EQ(parse_date(text), std::nullopt) << '"' << text << '"';
    EXPECT_FALSE(is_date(text));
  }
}

TEST(Dates, CountDaysAsThePlatformDoes) {
  const struct {
    DateParts parts;
    double serial;
  } rows[] = {
      {{1899, 12, 30, 0, 0, 0, 0}, 0},       {{1900, 1, 1, 0, 0, 0, 0}, 2},
      {{1899, 12, 29, 6, 0, 0, 0}, -1.25},   {{1899, 12, 30, 6, 0, 0, 0}, 0.25},
      {{2000, 2, 29, 12, 0, 0, 0}, 36585.5}, {{100, 1, 1, 0, 0, 0, 0}, -657434},
      {{9999, 12, 31, 0, 0, 0, 0}, 2958465}, {{2009, 3, 5, 14, 7, 33, 0}, 39877 + 50853 / 86400.0},
  };
  for (const auto& row : rows) {
    const Date date = make_date(row.parts);
    EXPECT_EQ(date.serial, row.serial);
    const DateParts back = parts_of(date);
    EXPECT_EQ(back.year, row.parts.year);
    EXPECT_EQ(back.month, row.parts.month);
    EXPECT_EQ(back.day, row.parts.day);
    EXPECT_EQ(back.hour, row.parts.hour);
    EXPECT_EQ(back.second, row.parts.second);
    EXPECT_EQ(back.millisecond, 0);
  }
}

TEST(Dates, EveryDayHasItsNumberAndBack) {
  for (std::int32_t day = -657434; day <= 2958465; ++day) {
    const DateParts parts = parts_of({static_cast<double>(day)});
    ASSERT_EQ(make_date(parts).serial, day);
  }
}

TEST(Dates, RefuseWhatDoesNotExist) {
  const DateParts rows[] = {{2023, 2, 29, 0, 0, 0, 0}, {2024, 0, 1, 0, 0, 0, 0},  {2024, 13, 1, 0, 0, 0, 0},
                            {99, 1, 1, 0, 0, 0, 0},    {10000, 1, 1, 0, 0, 0, 0}, {2024, 1, 1, 24, 0, 0, 0},
                            {2024, 1, 1, 0, -1, 0, 0}};
  for (const DateParts& parts : rows) EXPECT_THROW(make_date(parts), Error);
  for (const double serial : {-657435.0, 2958466.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_THROW(parts_of({serial}), Error);
}

TEST(Dates, OrderByTimeAlsoBeforeTheEpoch) {
  EXPECT_TRUE(std::is_lt(compare({-1.25}, {-1.75}))) << "later the same day, though the serial is lower";
  EXPECT_TRUE(std::is_eq(compare({-0.25}, {0.25})));
  EXPECT_TRUE(std::is_lt(compare({-2.5}, {-1.0})));
  EXPECT_EQ(day_number({-1.75}), -1);
  EXPECT_EQ(day_number({39876.9999999999}), 39877) << "noise of the fraction is no time of day";
}

TEST(Clock, GivesWholeSecondsAndCanBeReplaced) {
  EXPECT_EQ(parts_of(now()).millisecond, 0);
  EXPECT_GE(parts_of(now()).year, 2024);
  replace_clock([] { return make_date({2009, 3, 5, 14, 7, 33, 0}); });
  EXPECT_EQ(to_text(now()), "05/03/2009 14:07:33");
  EXPECT_EQ(to_text(today()), "05/03/2009");
  replace_clock({});
  EXPECT_GE(parts_of(today()).year, 2024);
}

}  // namespace
}  // namespace pradelis
