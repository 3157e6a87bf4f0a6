#include <gtest/gtest.h>

#include "site/form.h"
#include "site/identifiers.h"
#include "site/parameters.h"
#include "site/router.h"

namespace pradelis::tests {
namespace {

using site::Form;
using site::Parameters;

TEST(Border, TakesOnlyPlainNumbersForIdentifiers) {
  EXPECT_EQ(site::parse_identifier("2147483647"), 2147483647);
  for (const char* text :
       {"", "0", "-1", "+1", " 1", "1 ", "1.0", "1e3", "0x10", "2147483648", "1;drop", "١"}) {
    EXPECT_FALSE(site::parse_identifier(text)) << text;
  }
  EXPECT_EQ(site::join_identifiers(site::parse_identifiers("12, 15,7").value()), "12,15,7");
  EXPECT_TRUE(site::parse_identifiers("").value().empty());
  for (const char* list : {"1,", ",1", "1,,2", "1 or 1", "1)--"}) {
    EXPECT_FALSE(site::parse_identifiers(list)) << list;
  }
}

TEST(Border, KnowsTextsThatCouldEndALiteral) {
  for (const char* text : {"'", "a'b", "\\", "a\nb", "\x7f", "\x01"})
    EXPECT_TRUE(site::could_end_literal(text)) << text;
  for (const char* text : {"", "joão", "a\"b", "a;b--", "O´Brien"})
    EXPECT_FALSE(site::could_end_literal(text)) << text;
}

TEST(Border, TakesFormsApart) {
  const Parameters form = Parameters::parse("a=1&a=2&b=x%20y+z&c&d=%zz&e=%C3%A9&=v&");
  EXPECT_EQ(form.all("a"), (std::vector<std::string>{"1", "2"}));
  EXPECT_EQ(form.get("b"), "x y z");
  EXPECT_EQ(form.get("c"), "");
  EXPECT_EQ(form.get("d"), "%zz");
  EXPECT_EQ(form.get("e"), "é");
  EXPECT_TRUE(form.well_formed());
  EXPECT_EQ(form.encode_without({"a", "d"}), "b=x%20y%20z&e=%C3%A9&=v");
  for (const char* broken : {"a=%00", "a=%1b", "a=%ff", "a=%c3", "%ed%a0%80=1"}) {
    EXPECT_FALSE(Parameters::parse(broken).well_formed()) << broken;
  }
}

TEST(Border, RoutesByNumbersAndMethod) {
  site::Router router;
  const auto page = [](site::Context&) {};
  router.get("/a/{}/b", page);
  router.get("/a/novo/b", page);
  router.post("/c", page);
  EXPECT_EQ(router.find("GET", "/a/12/b").identifiers, std::vector<std::int32_t>{12});
  EXPECT_NE(router.find("GET", "/a/novo/b").route, nullptr);
  for (const char* path :
       {"/a/x/b", "/a//b", "/a/12/b/", "/a/12", "/a/12/b/c", "", "a/12/b", "/a/99999999999/b"}) {
    EXPECT_EQ(router.find("GET", path).route, nullptr) << path;
  }
  EXPECT_TRUE(router.find("GET", "/c").other_method);
  EXPECT_FALSE(router.find("GET", "/d").other_method);
}

/// A form with one field of each kind.
Form all_kinds() {
  Form form;
  form.text("texto", "Texto").limit(5);
  form.text("literal", "Literal").literal();
  form.area("area", "Área").limit(8);
  form.date("data", "Data");
  form.money("valor", "Valor");
  form.choice("uma", "Uma", {{1, "um"}, {2, "dois"}});
  form.checks("varias", "Várias", {{1, "um"}, {2, "dois"}});
  form.text("preciso", "Preciso").required();
  return form;
}

TEST(Border, ChecksWhatWasTyped) {
  struct Case {
    const char* typed;
    bool right;
  };
  for (const Case& c : std::initializer_list<Case>{{"texto=", true},
                                                   {"texto=12345", true},
                                                   {"texto=%C3%A1%C3%A9%C3%AD%C3%B3%C3%BA", true},
                                                   {"texto=123456", false},
                                                   {"texto=a%0Ab", false},
                                                   {"texto=O'B", true},
                                                   {"literal=O'B", false},
                                                   {"literal=a%5Cb", false},
                                                   {"area=a%0D%0Ab", true},
                                                   {"area=123456789", false},
                                                   {"data=2026-03-05", true},
                                                   {"data=05/03/2026", true},
                                                   {"data=31/02/2026", false},
                                                   {"data=amanh%C3%A3", false},
                                                   {"data=05/03/1850", false},
                                                   {"valor=1.234,56", true},
                                                   {"valor=R$ 10", true},
                                                   {"valor=1234.5", true},
                                                   {"valor=-1", false},
                                                   {"valor=(1)", false},
                                                   {"valor=1e9", false},
                                                   {"valor=%26HFF", false},
                                                   {"valor=muito", false},
                                                   {"valor=1,2,3", false},
                                                   {"valor=999999999999999999", false},
                                                   {"uma=2", true},
                                                   {"uma=3", false},
                                                   {"uma=1 or 1=1", false},
                                                   {"varias=1&varias=2", true},
                                                   {"varias=1&varias=3", false},
                                                   {"preciso=", false},
                                                   {"preciso=%20", false}}) {
    Form form = all_kinds();
    const std::string rest = std::string(c.typed).starts_with("preciso") ? "" : "&preciso=x";
    EXPECT_EQ(form.read(Parameters::parse(c.typed + rest)), c.right) << c.typed;
  }
}

TEST(Border, GivesWhatWasTyped) {
  Form form = all_kinds();
  ASSERT_TRUE(
      form.read(Parameters::parse("texto=%20a%20&data=2026-03-05&uma=2&varias=2&varias=1&preciso=x")));
  EXPECT_EQ(form.text_of("texto"), "a");
  EXPECT_EQ(form.date_text_of("data"), "05/03/2026");
  EXPECT_EQ(form.id_of("uma"), 2);
  EXPECT_EQ(form.ids_of("varias"), (std::vector<std::int32_t>{2, 1}));
}

}  // namespace
}  // namespace pradelis::tests
