#include "site/csv_reader.h"
#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using Rows = std::vector<std::vector<std::string>>;

Rows cells_of(const std::string& file) {
  const site::CsvTable table = site::read_csv(site::csv_text(file));
  Rows rows = {table.headings};
  for (const site::CsvRow& row : table.rows) rows.push_back(row.cells);
  return rows;
}

std::string refusal_of(const std::string& file) {
  try {
    cells_of(file);
  } catch (const site::CsvError& error) {
    return error.message;
  }
  return {};
}

TEST(CsvReader, TakesWhatSpreadsheetsWrite) {
  const Rows expected = {{"Nome", "Ação"}, {"a;b,c", "diz \"oi\""}};
  for (const char* file :
       {"\xEF\xBB\xBFNome;Ação\r\n\"a;b,c\";\"diz \"\"oi\"\"\"\r\n",
        "Nome,Ação\n\"a;b,c\",\"diz \"\"oi\"\"\"", "Nome\tAção\r\ra;b,c\t\"diz \"\"oi\"\"\"\r",
        "\n\nNome,A\xE7\xE3o\n\n\"a;b,c\",\"diz \"\"oi\"\"\"\n\n"}) {
    EXPECT_EQ(cells_of(file), expected) << file;
  }
  EXPECT_EQ(cells_of("N;A\xE7\xE3o\n\x93x\x94;\x80\n"), (Rows{{"N", "Ação"}, {"“x”", "€"}}));
  const site::CsvTable table = site::read_csv("a;b\n\"um\ndois\r\ntres\";x\n\ny;z");
  EXPECT_EQ(table.rows[0].cells[0], "um\ndois\r\ntres");
  EXPECT_EQ(table.rows[0].line, 2U);
  EXPECT_EQ(table.rows[1].line, 6U);
}

TEST(CsvReader, SaysWhereAFileIsBroken) {
  const std::string huge(40'000, 'x');
  std::string many = "a;b\n";
  for (int i = 0; i < 5001; ++i) many += "x;y\n";
  for (const auto& [file, reason] : std::vector<std::pair<std::string, std::string>>{
           {"", "O arquivo está vazio."},
           {"\n;;\n", "O arquivo está vazio."},
           {"a;b\n", "O arquivo só tem o cabeçalho."},
           {"a;b\nx;\"y\nz\n", "Linha 2: as aspas que abrem um campo aqui não fecham."},
           {"a;b\nx;y\nx;y\"z\"\n", "Linha 3: há aspas no meio de um campo"},
           {"a;b\n\"x\ny\"z;w\n", "Linha 3: depois das aspas que fecham"},
           {"a;b\n\n" + huge + ";y\n", "Linha 3: um campo tem mais de 32 KB."},
           {"a;b\nx;\"" + huge, "Linha 2: um campo tem mais de 32 KB."},
           {"a;b\nx\x01;y\n", "Linha 2: há um caractere de controle."},
           {std::string("a;b\n\0;y\n", 8), "Linha 2: há um caractere de controle."},
           {"a;b\nx;\x81\n", "Linha 2: há um caractere que não é de UTF-8 nem de Windows-1252."},
           {"\xFF\xFE"
            "a",
            "O arquivo está em UTF-16."},
           {many, "Linha 5002: o arquivo tem mais de 5.000 linhas."},
           {std::string(200, ';') + "\nx", "Linha 1: tem mais de 100 colunas."}}) {
    EXPECT_TRUE(refusal_of(file).starts_with(reason)) << reason << " / " << refusal_of(file);
  }
}

class Import : public SiteTest {
 protected:
  static constexpr const char* page = "/empresas/importar";

  /// Sends a file, and then what its preview would send.
  site::Response store(Visitor& visitor, const std::string& file, Fields more = {}) {
    const site::Response preview = visitor.post_file(page, "empresas.csv", file);
    EXPECT_EQ(preview.status, 200) << preview.body;
    Fields fields = chosen(preview);
    fields.insert(fields.end(), more.begin(), more.end());
    fields.emplace_back("texto", site::csv_text(file));
    fields.emplace_back("passo", "importar");
    return visitor.post(page, fields);
  }

  /// The columns that a preview has chosen.
  static Fields chosen(const site::Response& preview) {
    Fields fields;
    std::size_t at = 0;
    while ((at = preview.body.find("<select id=\"", at)) != std::string::npos) {
      at += 12;
      const std::string name = preview.body.substr(at, preview.body.find('"', at) - at);
      const std::size_t end = preview.body.find("</select>", at);
      const std::size_t mark = preview.body.find("\" selected", at);
      if (mark > end) continue;
      const std::size_t begin = preview.body.rfind('"', mark - 1) + 1;
      fields.emplace_back(name, preview.body.substr(begin, mark - begin));
    }
    return fields;
  }

  std::string companies() {
    return database_.rows(
        "select i.nome, p.razaosocial, o.nome, e.rua, c.nome, k.rcategoria from pessoajuridica j join item i on"
        " i.oid = j.oid join pessoa p on p.oid = j.oid join item o on o.oid = i.criadopor join endereco e on"
        " e.ritem = j.oid join item c on c.oid = e.rcidade join classificacao k on k.ritem = j.oid"
        " where j.oid > 100000 order by i.nome");
  }

  std::string contacts() {
    return database_.rows(
        "select e.nome, i.nome, a.rpapel from agrupamento a join item i on i.oid = a.ritem join item e on"
        " e.oid = a.rgrupo where i.cid = 45 and e.cid = 46 order by e.nome, i.nome");
  }

  Visitor ana_visitor_ = logged_in("ana");
};

TEST_F(Import, TakesItsOwnExportBack) {
  const std::int32_t company = add_company(ana_visitor_, "=O'Brien; <b>\"&");
  add_contact(ana_visitor_, company, "@Rita");
  add_contact(ana_visitor_, company, "'-Zeca");
  add_company(ana_visitor_, "Quitanda", true);
  const std::string file = ana_visitor_.get("/empresas/exportar").body;
  const std::string before = companies() + contacts();

  const site::Response again = store(ana_visitor_, file);
  EXPECT_TRUE(contains(again, "3 linhas recusadas") && contains(again, "Já Existe uma pessoa Jurídica"));
  EXPECT_EQ(companies() + contacts(), before);

  for (const char* table : {"pessoajuridica", "agrupamento"}) {
    database_.run(concat("delete from ", table,
                         " where oid > 100000 and oid not in (select oid from agrupamento"
                         " where rpapel in (7, 26735))"));
  }
  const site::Response preview = ana_visitor_.post_file(page, "empresas.csv", file);
  EXPECT_TRUE(contains(preview, "Entrariam: 2 empresas, 2 contatos. 0 linhas recusadas.")) << preview.body;
  EXPECT_TRUE(contains(preview, "=O&#39;Brien; &lt;b&gt;&quot;&amp;"));
  EXPECT_NE(companies() + contacts(), before);
  const site::Response done = store(ana_visitor_, file);
  EXPECT_TRUE(contains(done, "Gravado: 2 empresas, 2 contatos.")) << done.body;
  EXPECT_EQ(companies() + contacts(), before);
}

TEST_F(Import, WritesRowsWhollyAndReportsTheOthers) {
  add_company(ana_visitor_, "Já há");
  const std::string file =
      "Fantasia,Razão,Município,Contato,Função,Vendedor,Situação\r\n"
      "Nova,Nova Ltda.,CAMPINAS,Rita,comprador,ana moraes,cliente\r\n"
      "nova,Nova Ltda.,CAMPINAS,Zeca,Comprador,ana moraes,cliente\r\n"
      "Nova,Outra Ltda.,Campinas,Bia,Comprador,,\r\n"
      "Sem cargo,Ltda.,Campinas,Rita,Diretora,,\r\n"
      "Sem cidade,Ltda.,Atlântida,,,,\r\n"
      "Alheia,Ltda.,Campinas,,,Bruno D'Ávila,\r\n"
      "JÁ HÁ,Ltda.,Campinas,,,,\r\n"
      "Curta,Ltda.\r\n"
      "\"Duas\r\nlinhas\",Ltda.,Campinas,,,,\r\n"
      ",,Campinas,,,,\r\n";
  const std::string before = companies();
  const site::Response preview = ana_visitor_.post_file(page, "a.csv", file);
  for (const site::Response& answer : {preview, store(ana_visitor_, file)}) {
    EXPECT_TRUE(contains(answer, ": 1 empresa, 2 contatos. 8 linhas recusadas.")) << answer.body;
    for (const char* reason :
         {"A empresa já está na linha 2 com outros dados.",
          "“Diretora” não está entre os que você pode escolher.",
          "Cidade: Não há cidade cadastrada com esse nome.",
          "“Bruno D&#39;Ávila” não está entre os que você pode escolher.", "Já Existe uma pessoa Jurídica",
          "Tem 2 colunas, e o cabeçalho tem 7.", "Nome fantasia: Escreva em uma só linha.",
          "Nome fantasia: Preencha este campo."}) {
      EXPECT_TRUE(contains(answer, reason)) << reason;
    }
  }
  EXPECT_EQ(companies(), before + "\nNova|Nova Ltda.|Ana Moraes||Campinas|2121");
  EXPECT_EQ(contacts(), concat("Nova|Rita|", role_, "\nNova|Zeca|", role_));
  EXPECT_EQ(number("select count(*) from item where nome = 'Sem cargo'"), 0);
}

TEST_F(Import, TakesARowBackWhenItsContactFails) {
  // A second contact in this role is one too many for the database.
  add_contact(ana_visitor_, add_company(ana_visitor_, "Há"), "Bia");
  database_.run(concat("create unique index um_so on agrupamento (rpapel) where rpapel = ", role_));
  const std::int32_t items = number("select count(*) from item");
  const site::Response done =
      store(ana_visitor_,
            "Empresa;Razão social;Cidade;Contato;Cargo\nUma;Uma;Campinas;Rita;Comprador\n"
            "Duas;Duas;Campinas;;\n");
  EXPECT_TRUE(contains(done, "Gravado: 1 empresa, 0 contatos. 1 linha recusada.")) << done.body;
  EXPECT_EQ(number("select count(*) from item where nome in ('Uma', 'Rita')"), 0);
  EXPECT_EQ(number("select count(*) from item"), items + 2);
  EXPECT_EQ(number("select count(*) - count(distinct oid) from item"), 0);
  // What was taken back is taken back for good: identifiers are not given twice.
  EXPECT_GT(number("select proximooid from instalacao"), number("select max(oid) from item"));
}

TEST_F(Import, AsksForColumnsAndRefusesFilesThatAreNone) {
  const site::Response unknown = ana_visitor_.post_file(page, "a.csv", "X;Y;Z\nUma;Uma Ltda.;Campinas\n");
  EXPECT_TRUE(contains(unknown, "Entrariam: 0 empresas") && contains(unknown, ">X</option>"));
  const site::Response mapped = store(ana_visitor_, "X;Y;Z\nUma;Uma Ltda.;Campinas\n",
                                      {{"coluna_nome", "1"}, {"coluna_razao", "2"}, {"coluna_cidade", "3"}});
  EXPECT_TRUE(contains(mapped, "Gravado: 1 empresa,")) << mapped.body;
  const Fields again = {{"texto", "X\nUma\n"}, {"passo", "importar"}};
  EXPECT_EQ(ana_visitor_.post(page, again).status, 422);
  for (const auto& [file, reason] : std::vector<std::pair<std::string, const char*>>{
           {"a;b\n\"x;y\n", "Linha 2: as aspas"},
           {std::string(3'000'000, 'x'), "O arquivo tem mais de 2 MB."}}) {
    const site::Response refused = ana_visitor_.post_file(page, "a.csv", file);
    EXPECT_EQ(refused.status, 422);
    EXPECT_TRUE(contains(refused, reason)) << reason;
  }
  EXPECT_TRUE(contains(ana_visitor_.post(page), "Escolha um arquivo."));
}

}  // namespace
}  // namespace pradelis::tests
