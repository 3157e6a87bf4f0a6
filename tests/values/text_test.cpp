#include "values/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "values/error.h"

namespace pradelis {
namespace {

using Pieces = std::vector<std::string_view>;

TEST(TextCase, MapsLettersThatAreEachOthersCounterpart) {
  const struct {
    const char* lower;
    const char* upper;
  } rows[] = {
      {"abc xyz 019", "ABC XYZ 019"},
      {"ação", "AÇÃO"},
      {"àéîõüñçß÷", "ÀÉÎÕÜÑÇß÷"},
      {"ÿ", "Ÿ"},
      {"ąćęłńśźż", "ĄĆĘŁŃŚŹŻ"},
      {"ơưǎȟɓ", "ƠƯǍȞƁ"},
      {"αβγδέώϋ", "ΑΒΓΔΈΏΫ"},
      {"бдёя", "БДЁЯ"},
      {"ếộ", "ẾỘ"},
      {"日本", "日本"},
      {"😀", "😀"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(to_upper(row.lower), row.upper);
    EXPECT_EQ(to_lower(row.upper), row.lower);
  }
}

TEST(TextCase, KeepsLettersWithoutASingleCounterpartAndBrokenBytes) {
  for (const char* text : {"µ", "ı", "ſ", "ς", "ŉ", "\xC3", "\xC3(", "\xE1\xBA", "\xFF\xFE", "\xC0\xA1"}) {
    EXPECT_EQ(to_upper(text), text);
  }
  EXPECT_EQ(to_lower("İ"), "İ");
  EXPECT_EQ(to_upper("\xC3"
                     "abc"),
            "\xC3"
            "ABC");
}

TEST(Trim, RemovesBlanksOnly) {
  EXPECT_EQ(trim("  a b  "), "a b");
  EXPECT_EQ(trim_left("  a "), "a ");
  EXPECT_EQ(trim_right("  a "), "  a");
  EXPECT_EQ(trim("\t a\n "), "\t a\n");
  EXPECT_EQ(trim("   "), "");
  EXPECT_EQ(trim(""), "");
}

TEST(Split, KeepsEmptyPieces) {
  EXPECT_EQ(split("a,b", ','), (Pieces{"a", "b"}));
  EXPECT_EQ(split(",a,,b,", ','), (Pieces{"", "a", "", "b", ""}));
  EXPECT_EQ(split("a", ','), (Pieces{"a"}));
  EXPECT_EQ(split("", ','), Pieces{});
}

TEST(ReplaceAll, GoesFromLeftToRightOnce) {
  EXPECT_EQ(replace_all("O'Brien's", "'", "''"), "O''Brien''s");
  EXPECT_EQ(replace_all("aaa", "aa", "b"), "ba");
  EXPECT_EQ(replace_all("abc", "x", "y"), "abc");
  EXPECT_EQ(replace_all("abab", "ab", ""), "");
}

TEST(EqualIgnoringCase, FoldsAsciiOnly) {
  EXPECT_TRUE(equal_ignoring_case("Nome", "NOME"));
  EXPECT_FALSE(equal_ignoring_case("nome", "nomes"));
  EXPECT_FALSE(equal_ignoring_case("ã", "Ã"));
  EXPECT_FALSE(equal_ignoring_case("[", "{"));
}

TEST(IsValidUtf8, RefusesWhatIsNotWellFormed) {
  for (const char* text : {"", "abc", "ação", "日本", "😀", "\xF4\x8F\xBF\xBF", "\xED\x9F\xBF"}) {
    EXPECT_TRUE(is_valid_utf8(text)) << text;
  }
  const char* const broken[] = {"\x80",
                                "\xC3",
                                "\xC3(",
                                "\xC0\x80",
                                "\xE0\x80\x80",
                                "\xED\xA0\x80",
                                "\xE2\x82",
                                "\xF0\x80\x80\x80",
                                "\xF4\x90\x80\x80",
                                "\xF5\x80\x80\x80",
                                "\xFF",
                                "a\xE9",
                                "\xE2\x28\xA1"};
  for (const char* text : broken) EXPECT_FALSE(is_valid_utf8(text));
}

TEST(Concat, JoinsTextsNumbersAndVariants) {
  const Variant oid = std::int32_t{100123};
  EXPECT_EQ(concat("select * from item where oid=", oid, " and cid=", 19, " and n='", Variant::null(), "'"),
            "select * from item where oid=100123 and cid=19 and n=''");
  EXPECT_THROW(concat("a", Variant::missing()), Error);
}

TEST(Concat, WritesIntegersOfAnyLength) {
  std::int64_t power = 1;
  for (int digits = 1; digits <= 18; ++digits, power *= 10) {
    for (const std::int64_t value : {power - 1, power, power + 7, -power, 1 - power}) {
      EXPECT_EQ(concat(value), std::to_string(value));
    }
  }
  for (const std::int64_t limit :
       {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
    EXPECT_EQ(concat(limit), std::to_string(limit));
  }
}

}  // namespace
}  // namespace pradelis
