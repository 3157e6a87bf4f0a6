#include "site/file_data.h"
#include "site/multipart.h"
#include "tests/site/walk.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

using site::Parameters;
using site::Upload;

TEST(Multipart, TakesFieldsAndFilesApart) {
  const std::string type = "multipart/form-data; boundary=\"--x\"";
  const std::string content = "a\r\n--\r\n----y\r\n\r\n" + std::string("\0\xff", 2);
  Parameters fields;
  std::vector<Upload> uploads;
  ASSERT_TRUE(site::parse_multipart(
      type,
      "----x\r\ncontent-disposition: form-data; name=\"nota\"\r\n\r\nO'Brien <b>\"&\r\n"
      "----x\r\nContent-Type: text/html\r\nContent-Disposition: form-data; name=\"arquivo\"; "
      "filename=\"a;b%22.html\"\r\n\r\n" +
          content +
          "\r\n----x\r\nContent-Disposition: form-data; name=\"outro\"; filename=\"\"\r\n\r\n\r\n----x--\r\n",
      fields, uploads));
  EXPECT_EQ(fields.get("nota"), "O'Brien <b>\"&");
  ASSERT_EQ(uploads.size(), 1U);
  EXPECT_EQ(uploads[0].name, "a;b\".html");
  EXPECT_EQ(uploads[0].content, content);
}

TEST(Multipart, RefusesWhatIsNotOfItsForm) {
  const std::string type = "multipart/form-data; boundary=x";
  for (const char* body : {"", "--y\r\n", "--x", "--x\r\n", "--x\r\n\r\n",
                           "--x\r\nContent-Disposition: form-data; name=\"a\"\r\n\r\nb",
                           "--x\r\nContent-Disposition: form-data\r\n\r\nb\r\n--x--", "--x\r\n\r\n--x--",
                           "--x\r\n\r\n\r\n--x--"}) {
    Parameters fields;
    std::vector<Upload> uploads;
    EXPECT_FALSE(site::parse_multipart(type, body, fields, uploads)) << body;
  }
  Parameters fields;
  std::vector<Upload> uploads;
  for (const char* broken :
       {"multipart/form-data", "multipart/form-data; boundary=", "multipart/form-data;x"}) {
    EXPECT_FALSE(site::parse_multipart(broken, "--\r\n\r\n\r\n----", fields, uploads)) << broken;
  }
}

TEST(FileNames, HoldNoFoldersAndNoControls) {
  struct Case {
    std::string sent, stored;
  };
  for (const Case& c :
       std::initializer_list<Case>{{"../../etc/passwd", "passwd"},
                                   {"C:\\pasta\\nota.pdf", "nota.pdf"},
                                   {"a\r\nSet-Cookie: x", "aSet-Cookie: x"},
                                   {"..", "arquivo"},
                                   {"pasta/", "arquivo"},
                                   {"\xff.txt", "arquivo"},
                                   {"O'Brien <b>\"&.txt", "O'Brien <b>\"&.txt"},
                                   {"ç" + std::string(199, 'a') + ".pdf", std::string(196, 'a') + ".pdf"}}) {
    EXPECT_EQ(site::safe_file_name(c.sent), c.stored);
  }
}

/// Files over HTTP, as a browser sends and gets them.
class Files : public Walk {
 protected:
  Files() {
    log_in("ana");
    company_ = submit("/empresas/nova", {{"nome", "Padaria Central"},
                                         {"razao", "Padaria"},
                                         {"situacao", "2127"},
                                         {"vendedor", to_text(ana_)},
                                         {"cidade", "Campinas"}});
  }

  httplib::Result upload(const std::string& page, const std::string& name, const std::string& content,
                         const std::string& note = {}) {
    const std::string secret = secret_of(get(page));
    return browser_->Post(
        page, headers(),
        {{"_token", secret, "", ""}, {"descricao", note, "", ""}, {"arquivo", content, name, "text/html"}});
  }

  std::string newest() { return concat("/arquivos/", number("select max(id) from crm_arquivo")); }

  std::string company_;
};

TEST_F(Files, ComeBackUnchangedUnderASafeName) {
  std::string content;
  for (int i = 0; i < 300'000; ++i) content += static_cast<char>(i * 31 % 251);
  content += "\r\n--";
  const auto sent = upload(company_ + "/arquivos/novo", "pasta/O'Brien ção;%22.html", content, "<b>nota</b>");
  ASSERT_TRUE(sent);
  EXPECT_EQ(sent->get_header_value("Location"), company_);
  const std::string page = get(company_);
  for (const char* text : {"O&#39;Brien ção;&quot;.html", "&lt;b&gt;nota&lt;", "KBytes", "Ana Moraes"}) {
    EXPECT_NE(page.find(text), std::string::npos) << text;
  }
  const auto file = browser_->Get(newest(), headers());
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->body == content);
  EXPECT_EQ(file->get_header_value("Content-Type"), "application/octet-stream");
  EXPECT_EQ(file->get_header_value("X-Content-Type-Options"), "nosniff");
  // The client takes the percent signs of headers apart.
  EXPECT_EQ(file->get_header_value("Content-Disposition"),
            "attachment; filename=\"O_Brien ____o__.html\"; filename*=UTF-8''O'Brien ção;\".html");
  upload(company_ + "/arquivos/novo", "vazio.txt", "");
  EXPECT_EQ(browser_->Get(newest(), headers())->body, "");
}

TEST_F(Files, AreRefusedWhenTheyAreTooLargeOrMissing) {
  const std::string page = company_ + "/arquivos/novo";
  const auto large = upload(page, "a.bin", std::string(20 * 1024 * 1024 + 1, 'x'), "minha nota");
  ASSERT_TRUE(large);
  EXPECT_EQ(large->status, 422);
  EXPECT_NE(large->body.find("O arquivo tem mais de 20 MB."), std::string::npos);
  EXPECT_NE(large->body.find("minha nota"), std::string::npos);
  EXPECT_EQ(upload(page, "a.bin", std::string(21 * 1024 * 1024, 'x'))->status, 413);
  EXPECT_EQ(upload(page, "", "")->status, 422);
  // Nobody but those who are logged in sends more than a form.
  httplib::Client stranger("127.0.0.1", host_->port());
  const httplib::MultipartFormDataItems items = {{"arquivo", std::string(600'000, 'x'), "a", "text/plain"}};
  EXPECT_EQ(stranger.Post(page, items)->status, 413);
  EXPECT_EQ(number("select count(*) from crm_arquivo"), 0);
}

TEST_F(Files, AreSeenAndDeletedByThoseWhoMay) {
  upload(company_ + "/arquivos/novo", "contrato.pdf", "segredo");
  const std::string of_company = newest();
  const std::string deal =
      submit(company_ + "/negocios/novo", {{"nome", "Reforma"}, {"valor", "1"}, {"vendedor", to_text(ana_)}});
  upload(deal + "/arquivos/novo", "orcamento.pdf", "segredo");
  const std::string of_deal = newest();
  EXPECT_NE(get(deal).find("orcamento.pdf"), std::string::npos);
  EXPECT_EQ(get(company_).find("orcamento.pdf"), std::string::npos);
  const httplib::Params secret = {{"_token", secret_of(get(company_))}};
  EXPECT_EQ(browser_->Post(company_ + "/cliente", headers(), secret)->status, 303);

  log_in("bruno");
  EXPECT_EQ(get(of_company), "segredo");
  EXPECT_EQ(browser_->Get(of_deal, headers())->status, 404);
  EXPECT_EQ(browser_->Get(of_deal + "/excluir", headers())->status, 404);
  EXPECT_EQ(browser_->Get("/arquivos/99", headers())->status, 404);

  log_in("helena");
  const std::string form = get(of_deal + "/excluir");
  const auto refused =
      browser_->Post(of_deal + "/excluir", headers(), httplib::Params{{"_token", secret_of(form)}});
  EXPECT_NE(refused->body.find("Você não tem permissão para excluir o arquivo."), std::string::npos);
  EXPECT_EQ(number("select count(*) from crm_arquivo"), 2);
  log_in("ana");
  EXPECT_EQ(submit(of_deal + "/excluir", {}), deal);
  EXPECT_EQ(number("select count(*) from crm_arquivo"), 1);
}

}  // namespace
}  // namespace pradelis::tests
