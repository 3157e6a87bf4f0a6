#include <regex>

#include "site/component_text.h"
#include "site/templates.h"
#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

constexpr const char* awkward = "O'Brien <b>\"&amp; \\";
constexpr const char* awkward_html = "O'Brien &lt;b&gt;&quot;&amp;amp; \\";

TEST(ComponentText, ComesBackAsTyped) {
  for (const char* typed : {"", "simples", awkward, "&lt;", "&&lt;;<>\"'", "&nbsp;"}) {
    EXPECT_EQ(site::from_component_text(site::to_component_text(typed)), typed);
    EXPECT_EQ(site::to_component_text(typed).find_first_of("<>\""), std::string::npos);
  }
  EXPECT_EQ(site::to_component_text(awkward), awkward_html);
  EXPECT_EQ(site::from_component_text("A & B <c>"), "A & B <c>");
}

/// What a browser makes of the page's texts: the component's HTML stands in attributes.
std::string unescaped(std::string text) {
  for (const auto& [sequence, character] : std::initializer_list<std::pair<const char*, const char*>>{
           {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&#x2F;", "/"}, {"&amp;", "&"}}) {
    text = replace_all(text, sequence, character);
  }
  return text;
}

bool holds(const site::Response& response, const std::string& html) {
  return unescaped(response.body).find(html) != std::string::npos;
}

/// A text, a date, a number and a list, defined through the pages.
class ExtraFields : public SiteTest {
 protected:
  ExtraFields() {
    keeper_.post("/campos/listas/nova", {{"nome", "Porte"}});
    list_ = number("select max(oid) from listadeobjetos");
    for (const char* entry : {"Grande", awkward}) {
      const site::Response response =
          keeper_.post(concat("/campos/listas/", list_, "/nova"), {{"nome", entry}});
      EXPECT_EQ(response.status, 303) << response.body;
    }
    choice_ = number("select max(oid) from categoria");
    text_ = define(awkward, 1);
    date_ = define("Cliente desde", 3);
    number_ = define("Lojas", 4);
    pick_ = define("Porte", 2, list_);
    company_ = add_company(ana_visitor_, "Padaria Central");
    page_ = concat("/empresas/", company_, "/campos");
  }

  std::int32_t define(const char* label, std::int32_t type, std::int32_t list = 0) {
    Fields fields = {{"rotulo", label}, {"tipo", to_text(type)}};
    if (list != 0) fields.emplace_back("lista", to_text(list));
    const site::Response response = keeper_.post("/campos/novo", fields);
    EXPECT_EQ(response.status, 303) << response.body;
    return number("select max(oid) from dadoadicional");
  }

  /// Sends the form of the four fields.
  site::Response send(Visitor& visitor, const std::string& text, const std::string& date,
                      const std::string& count, const std::string& choice, Fields more = {}) {
    Fields fields = {{"ADITIVO_TOTAL", "4"}};
    int row = 0;
    for (const auto& [id, value] : std::vector<std::pair<std::int32_t, std::string>>{
             {text_, text}, {date_, date}, {number_, count}, {pick_, choice}}) {
      fields.emplace_back(concat("ADITIVO_DEFINICAO", ++row), to_text(id));
      fields.emplace_back(concat("ADITIVO_VALOR", row), value);
    }
    fields.insert(fields.end(), more.begin(), more.end());
    return visitor.post(page_, fields);
  }

  std::string stored() {
    return database_.rows(concat("select svalor, dtvalor, lsvalor, nvalor from aditivo where ritem = ",
                                 company_, " order by rdefinicao"));
  }

  Visitor keeper_ = logged_in("TARVONEL");
  Visitor ana_visitor_ = logged_in("ana");
  std::int32_t list_ = 0, choice_ = 0, text_ = 0, date_ = 0, number_ = 0, pick_ = 0, company_ = 0;
  std::string page_;
};

TEST_F(ExtraFields, ShowLabelsChoicesAndValuesAsTyped) {
  EXPECT_EQ(send(ana_visitor_, awkward, "5/3/2026", "1.234,5", to_text(choice_)).status, 303);
  EXPECT_EQ(stored(),
            concat(awkward_html, "|null|null|null\nnull|05/03/2026|null|null\nnull|null|1.234,5|null\n",
                   awkward_html, "|null|null|", choice_));
  for (const std::string& target : {page_, concat("/empresas/", company_)}) {
    const site::Response page = ana_visitor_.get(target);
    for (const std::string& html :
         {concat("<td><b>", awkward_html, "<input type = \"hidden\" name=\"ADITIVO_DEFINICAO1\""),
          concat("value=\"", awkward_html, "\">"), std::string("value=\"05/03/2026\" onkeyup"),
          std::string("value=\"1.234,5\" onblur=\"ChecaNumero(this)\""),
          concat("<option value=\"", choice_, "\" selected>", awkward_html, "</option>"),
          std::string("<option value=\"0\"></option>")}) {
      EXPECT_TRUE(holds(page, html)) << html << page.body;
    }
  }
  // Emptied, and the empty choice of a list.
  EXPECT_EQ(send(ana_visitor_, "", "", "", "0").status, 303);
  EXPECT_TRUE(holds(ana_visitor_.get(page_), "<option value=\"0\" selected></option>"));
  EXPECT_EQ(number("select count(*) from aditivo where svalor <> '' or dtvalor is not null"), 0);
  EXPECT_EQ(site::find_asset("images/mais.gif")->content_type, "image/gif");
  EXPECT_NE(site::find_asset("images/1ptrans.gif"), nullptr);
}

TEST_F(ExtraFields, RefuseWhatDoesNotFitAndKeepIt) {
  const std::int32_t before = version();
  struct Case {
    std::string date, count, choice;
    const char* reason;
  };
  for (const Case& c :
       std::initializer_list<Case>{{"31/02/2026", "", "0", "Cliente desde: Data inválida."},
                                   {"", "muitas", "0", "Lojas: Escreva um número"},
                                   {"", "", to_text(company_), "Porte: Escolha uma das opções oferecidas."},
                                   {"", "", "1 or 1=1", nullptr}}) {
    const site::Response response = send(ana_visitor_, "minha <nota>", c.date, c.count, c.choice);
    if (c.reason == nullptr) continue;
    EXPECT_EQ(response.status, 422) << c.reason;
    EXPECT_TRUE(contains(response, c.reason) && holds(response, "value=\"minha &lt;nota&gt;\"")) << c.reason;
    EXPECT_EQ(version(), before);
  }
  // Fields that are not offered are not stored.
  EXPECT_EQ(
      ana_visitor_
          .post(page_, {{"ADITIVO_TOTAL", "1"}, {"ADITIVO_DEFINICAO1", "16353"}, {"ADITIVO_VALOR1", "x"}})
          .status,
      303);
  EXPECT_EQ(number("select count(*) from aditivo where rdefinicao = 16353"), 0);
}

TEST_F(ExtraFields, TellTheSecondOfTwoWhoChangeOne) {
  const std::string shown = concat("ANTES", text_);
  EXPECT_TRUE(contains(ana_visitor_.get(page_), concat("name=\"", shown, "\" value=\"\"")));
  Visitor helena = logged_in("helena");
  EXPECT_EQ(send(helena, "de Helena", "", "", "0", {{shown, ""}}).status, 303);
  const site::Response second = send(ana_visitor_, "de Ana", "", "7", "0", {{shown, ""}});
  EXPECT_EQ(second.status, 422);
  EXPECT_TRUE(contains(second, "Outra pessoa mudou este campo") && holds(second, "value=\"de Ana\""));
  EXPECT_TRUE(contains(second, concat("name=\"", shown, "\" value=\"de Helena\"")));
  EXPECT_EQ(send(ana_visitor_, "", "", "7", "0", {{shown, ""}}).status, 303);
  EXPECT_EQ(number("select count(*) from aditivo where svalor = 'de Helena'"), 1);
  EXPECT_EQ(send(ana_visitor_, "de Ana", "", "7", "0", {{shown, "de Helena"}}).status, 303);
  EXPECT_EQ(number("select count(*) from aditivo where svalor = 'de Ana'"), 1);
}

TEST_F(ExtraFields, AreOrderedHiddenAndRenamed) {
  const auto order = [&] {
    const std::string page = unescaped(ana_visitor_.get(page_).body);
    std::string found;
    const std::regex row(R"rx(ADITIVO_DEFINICAO\d+" value = "(\d+)")rx");
    for (std::sregex_iterator at(page.begin(), page.end(), row), end; at != end; ++at)
      found += at->str(1) + " ";
    return found;
  };
  EXPECT_EQ(order(), concat(text_, " ", date_, " ", number_, " ", pick_, " "));
  keeper_.post(concat("/campos/", pick_, "/subir"));
  keeper_.post(concat("/campos/", text_, "/descer"));
  keeper_.post(concat("/campos/", date_, "/subir"));
  EXPECT_EQ(order(), concat(date_, " ", text_, " ", pick_, " ", number_, " "));
  keeper_.post(concat("/campos/", text_, "/ocultar"));
  EXPECT_EQ(order(), concat(date_, " ", pick_, " ", number_, " "));
  EXPECT_TRUE(contains(keeper_.get("/campos"), "O&#39;Brien &lt;b&gt;"));
  keeper_.post(concat("/campos/", text_, "/mostrar"));
  keeper_.post(concat("/campos/", text_, "/alterar"), {{"rotulo", "Ramo"}});
  EXPECT_TRUE(holds(ana_visitor_.get(page_), "<td><b>Ramo<"));
  EXPECT_EQ(keeper_.post("/campos/novo", {{"rotulo", "x"}, {"tipo", "2"}}).status, 422);
  EXPECT_EQ(keeper_.post(concat("/campos/listas/", list_, "/nova"), {{"nome", "grande"}}).status, 422);
  for (const char* target : {"/campos", "/campos/novo"}) EXPECT_EQ(ana_visitor_.get(target).status, 404);
  EXPECT_EQ(ana_visitor_.post(concat("/campos/", text_, "/ocultar")).status, 404);
}

class Categories : public SiteTest {
 protected:
  Categories() {
    root_ = create(awkward, 0);
    leaf_ = create("Padarias", root_);
    other_ = create("Mercados", root_);
    company_ = add_company(ana_visitor_, "Padaria Central");
    page_ = concat("/empresas/", company_, "/categorias");
  }

  std::int32_t create(const char* name, std::int32_t parent) {
    Fields fields = {{"nome", name}};
    if (parent != 0) fields.emplace_back("pai", to_text(parent));
    const site::Response response = keeper_.post("/categorias/nova", fields);
    EXPECT_EQ(response.status, 303) << response.body;
    return number("select max(oid) from categoria");
  }

  std::string classified() {
    return database_.rows(
        concat("select rcategoria from classificacao where ritem = ", company_, " order by 1"));
  }

  Visitor keeper_ = logged_in("TARVONEL");
  Visitor ana_visitor_ = logged_in("ana");
  std::int32_t root_ = 0, leaf_ = 0, other_ = 0, company_ = 0;
  std::string page_;
};

TEST_F(Categories, AreTickedInTheTreeAndTakenOff) {
  const site::Response tree = ana_visitor_.get(page_);
  EXPECT_TRUE(holds(tree, concat("\" id=\"categoria1\" >", awkward_html, "</b><br>"))) << tree.body;
  EXPECT_TRUE(holds(tree, "src=\"/assets/images/mais.gif\""));
  EXPECT_EQ(
      ana_visitor_.post(page_, {{"antes", ""}, {"categoria", to_text(leaf_)}, {"categoria", to_text(root_)}})
          .status,
      303);
  EXPECT_EQ(classified(), concat("2127\n", root_, "\n", leaf_));
  EXPECT_TRUE(holds(ana_visitor_.get(page_), concat("value=\"", leaf_, "\" id=\"categoria3\"  Checked >")));
  const site::Response company = ana_visitor_.get(concat("/empresas/", company_));
  EXPECT_TRUE(contains(company, ">Padarias<") && contains(company, "O&#39;Brien &lt;b&gt;&quot;&amp;amp;"));
  // Somebody else, whose page is older, ticks another one: nothing of the first is lost.
  Visitor helena = logged_in("helena");
  helena.post(page_, {{"antes", ""}, {"categoria", to_text(other_)}});
  EXPECT_EQ(classified(), concat("2127\n", root_, "\n", leaf_, "\n", other_));
  ana_visitor_.post(page_, {{"antes", concat(root_, ",", leaf_)}, {"categoria", to_text(leaf_)}});
  EXPECT_EQ(classified(), concat("2127\n", leaf_, "\n", other_));
  ana_visitor_.post(page_, {{"antes", "2127"}});
  for (const std::string& wrong : {to_text(company_), std::string("2121"), std::string("x")}) {
    EXPECT_EQ(ana_visitor_.post(page_, {{"antes", ""}, {"categoria", wrong}}).status, 422) << wrong;
  }
  EXPECT_EQ(classified(), concat("2127\n", leaf_, "\n", other_));
  EXPECT_EQ(logged_in("bruno").get(page_).status, 404);
}

TEST_F(Categories, AreKeptByTheMaintenanceUser) {
  EXPECT_TRUE(contains(keeper_.get("/categorias"), "O&#39;Brien &lt;b&gt;&quot;&amp;amp; \\ › Padarias"));
  EXPECT_TRUE(contains(keeper_.get(concat("/categorias/", root_, "/alterar")), "value=\"O&#39;Brien &lt;b"));
  EXPECT_EQ(keeper_.post(concat("/categorias/", leaf_, "/alterar"), {{"nome", "Pães & doces"}}).status, 303);
  EXPECT_EQ(number("select count(*) from item where nome = 'Pães &amp; doces'"), 1);
  EXPECT_EQ(keeper_.get("/categorias/2121/alterar").status, 404);
  EXPECT_EQ(ana_visitor_.get("/categorias").status, 404);
}

}  // namespace
}  // namespace pradelis::tests
