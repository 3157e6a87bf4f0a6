#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "browser.h"
#include "dataaccess/dialect.h"
#include "dataaccess/lifter.h"
#include "dataaccess/row_limit.h"
#include "database.h"
#include "tests/support/sql_parser.h"
#include "values/text.h"

// The statements of the component and of the site, as they go to engines that are not at hand, before a
// parser of their dialects.
namespace pradelis::command {
namespace {

/// The statements of a trace, one of each shape.
std::vector<std::string> traced(const std::filesystem::path& file) {
  std::vector<std::string> statements;
  std::set<std::string, std::less<>> shapes;
  dataaccess::Lifter lifter;
  std::ifstream trace(file);
  for (std::string line; std::getline(trace, line);) {
    std::string statement = line.substr(line.rfind('\t') + 1);
    if (statement.starts_with("pragma")) continue;  // SQLite's own
    statement = replace_all(replace_all(statement, "\\n", " "), "\\t", " ");
    lifter.lift(statement, dataaccess::common_dialect);
    if (shapes.insert(std::string(lifter.text().text)).second) statements.push_back(std::move(statement));
  }
  return statements;
}

/// The dialect's limit with a number in it.
std::string limit_of(const dataaccess::Dialect& dialect) { return replace_all(dialect.row_limit, "?", "50"); }

TEST(OtherEngines, UnderstandWhatTheComponentAndTheSiteSend) {
  if (!tests::has_sql_parser()) GTEST_SKIP() << "sqlfluff is not installed";
  const TemporaryFolder folder;
  const std::filesystem::path demo_trace = folder / "demo", site_trace = folder / "site";
  const Database database;
  ASSERT_EQ(database.init().status, 0);
  const Process::Outcome demo = run({"demo", "--database", database.url(), "--companies", "20", "--deals",
                                     "30", "--trace-sql", demo_trace});
  ASSERT_EQ(demo.status, 0) << demo.complaint;
  {
    Process host({"serve", "--database", database.url(), "--port", "0", "--sessions", "database",
                  "--trace-sql", site_trace});
    std::string address = host.read_line();
    address.pop_back();
    Browser browser;
    ASSERT_TRUE(browser.log_in(address, "TARVONEL", maintenance_password));
    const std::string company =
        database.value("select max(p.oid) from pessoajuridica_r p, classificacao c where p.oid = c.ritem");
    const std::string deal = database.value("select max(oid) from crm_pos_negocio");
    for (const std::string& page :
         {std::string("/"), std::string("/agenda"), std::string("/negocios"), std::string("/negocios/quadro"),
          std::string("/empresas?q=a"), std::string("/produtos"), std::string("/equipe"),
          std::string("/listas"), std::string("/campos"), std::string("/categorias"), std::string("/cidades"),
          "/empresas/" + company, "/negocios/" + deal, "/empresas/" + company + "/alterar"}) {
      browser.get(address, page);
    }
    EXPECT_EQ(browser.post(address, "/sair", {}).status, 303);
    EXPECT_EQ(host.stop().status, 0);
  }
  std::vector<std::string> statements = traced(demo_trace);
  const std::vector<std::string> of_site = traced(site_trace);
  statements.insert(statements.end(), of_site.begin(), of_site.end());
  EXPECT_GT(statements.size(), 100U);
  const std::pair<const char*, const dataaccess::Dialect&> cases[] = {
      {"tsql", dataaccess::sql_server_dialect}, {"oracle", dataaccess::oracle_dialect}};
  for (const auto& [parser, dialect] : cases) {
    std::vector<std::string> translated;
    for (const std::string& statement : statements) {
      translated.push_back(dataaccess::in_dialect(statement, dialect));
      const std::string limited = dataaccess::with_row_limit(translated.back(), dialect).text;
      if (!limited.empty()) translated.push_back(replace_all(limited, dialect.row_limit, limit_of(dialect)));
    }
    EXPECT_EQ(tests::not_understood(parser, translated), "") << parser;
  }
}

}  // namespace
}  // namespace pradelis::command
