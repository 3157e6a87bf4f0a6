#include "site/bar_chart.h"
#include "site/deal_months.h"
#include "site/templates.h"
#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using site::Month;

TEST(Months, AreCountedAcrossYears) {
  EXPECT_EQ((Month{2026, 11}.plus(2).iso()), "2027-01");
  EXPECT_EQ((Month{2026, 1}.plus(-1).iso()), "2025-12");
  EXPECT_EQ((Month{2026, 12}.plus(12).iso()), "2027-12");
  for (const char* text :
       {"", "2026", "2026-00", "2026-13", "2026-1", "2026/11", "1899-12", "abcd-11", "2026-1x"}) {
    EXPECT_EQ(site::parse_month(text, {2000, 2}).iso(), "2000-02") << text;
  }
  EXPECT_EQ(site::parse_month("2026-09", {}).name(), "setembro de 2026");
  EXPECT_EQ(site::parse_month("2026-10", {}).short_name(), "out/26");
}

TEST(Chart, ScalesItsBars) {
  const std::string drawing = site::render("_chart", site::bar_chart_view({{"a", 1500, 0}, {"b", 0, 2000}}));
  EXPECT_NE(drawing.find(">500<"), std::string::npos) << drawing;
  EXPECT_NE(drawing.find(">1,5 mil<"), std::string::npos);
  // 1500 of 2000 takes three quarters of the 200 units between 12 and 212.
  EXPECT_NE(drawing.find("y=\"62.0\" width=\"125.3\" height=\"150.0\""), std::string::npos);
  EXPECT_NE(drawing.find("y=\"12.0\" width=\"125.3\" height=\"200.0\""), std::string::npos);
  EXPECT_EQ(site::render("_chart", site::bar_chart_view({{"a", 0, 0}})).find("class=\"solid\""),
            std::string::npos);
}

class DealBoard : public SiteTest {
 protected:
  std::int32_t deal(const std::string& name, const std::string& expected, const std::string& value) {
    const site::Response response = ana_visitor_.post(
        concat("/empresas/", company_, "/negocios/novo"),
        {{"nome", name}, {"valor", value}, {"data", expected}, {"vendedor", to_text(ana_)}});
    return redirected_to(response);
  }

  /// A row of the table of numbers, without its markup.
  static std::string numbers(const site::Response& page, const std::string& month) {
    const std::size_t begin = page.body.find("<td>" + month + "</td>");
    if (begin == std::string::npos) return {};
    std::string row;
    bool tag = false;
    for (const char c : page.body.substr(begin, page.body.find("</tr>", begin) - begin)) {
      if (c == '<' && !row.empty() && row.back() != '|') row += '|';
      if (c == '<' || c == '>') tag = c == '<';
      if (!tag && c != '>') row += c;
    }
    return replace_all(row, "R$\u00a0", "");
  }

  Visitor ana_visitor_ = logged_in("ana");
  std::int32_t company_ = add_company(ana_visitor_, "Padaria Central");
};

TEST_F(DealBoard, SumsByStateAndMonthToTheDay) {
  deal("Antes", "31/12/2025", "7");
  deal("Primeiro", "01/01/2026", "1.000,50");
  deal("Último", "31/01/2026", "2.000");
  deal("Depois", "01/01/2027", "9");
  deal("Sem dia", "", "5");
  const std::int32_t won = deal("Ganho <b>", "01/01/2026", "100");
  const std::int32_t lost = deal("Perdido", "01/01/2026", "300");
  ana_visitor_.post(concat("/negocios/", won, "/fechar"), {{"data", "2026-02-28"}, {"valor", "150"}});
  ana_visitor_.post(concat("/negocios/", lost, "/perder"),
                    {{"data", "2026-02-01"}, {"motivo", to_text(reason_)}, {"observacao", ""}});

  const site::Response page = ana_visitor_.get("/negocios/quadro?inicio=2026-01");
  EXPECT_EQ(numbers(page, "janeiro de 2026"), "janeiro de 2026|3.000,50|2 negócios|—|—|");
  EXPECT_EQ(numbers(page, "fevereiro de 2026"), "fevereiro de 2026|—|150,00|1 negócio|300,00|1 negócio|");
  EXPECT_EQ(numbers(page, "dezembro de 2026"), "dezembro de 2026|—|—|—|");
  for (const char* text : {"Primeiro", "Último", "Ganho &lt;b&gt;", "Perdido", "Sem data prevista", "Sem dia",
                           "inicio=2025-07", "inicio=2026-07"}) {
    EXPECT_TRUE(contains(page, text)) << text;
  }
  EXPECT_FALSE(contains(page, ">Antes<"));
  EXPECT_FALSE(contains(page, ">Depois<"));
}

TEST_F(DealBoard, ShowsTheLargestAndCountsTheRest) {
  for (int i = 1; i <= 6; ++i) deal(concat("Loja ", i), "10/03/2026", concat(i, "00"));
  const site::Response page = ana_visitor_.get("/negocios/quadro?inicio=2026-03");
  for (const char* text : {"Loja 6", "Loja 3", "e mais 2 negócios"})
    EXPECT_TRUE(contains(page, text)) << text;
  EXPECT_FALSE(contains(page, "Loja 2"));
}

TEST_F(DealBoard, HoldsNothingOfOtherTeams) {
  deal("Segredo", "10/03/2026", "7.654,32");
  Visitor bruno = logged_in("bruno");
  for (const std::string& target : {std::string("/negocios/quadro?inicio=2026-03"),
                                    concat("/negocios/quadro?inicio=2026-03&vendedor=", ana_)}) {
    EXPECT_TRUE(contains(logged_in("helena").get(target), "Segredo")) << target;
    const site::Response page = bruno.get(target);
    EXPECT_FALSE(contains(page, "Segredo")) << target;
    EXPECT_FALSE(contains(page, "7.654")) << target;
  }
}

}  // namespace
}  // namespace pradelis::tests
