#include <future>

#include "tests/site/walk.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

TEST_F(Walk, FromLoginToAClosedDeal) {
  EXPECT_EQ(submit("/entrar", {{"usuario", "ana"}, {"senha", password}}), "/");
  const std::string company = submit("/empresas/nova", {{"nome", "Mercado Aurora"},
                                                        {"razao", "Mercado Aurora Ltda."},
                                                        {"situacao", "2127"},
                                                        {"vendedor", to_text(ana_)},
                                                        {"cidade", "Campinas"}});
  submit(company + "/contatos/novo", {{"nome", "Rita Nunes"}, {"cargo", to_text(role_)}});
  const std::string deal = submit(
      company + "/negocios/novo",
      {{"nome", "Troca das gôndolas"},
       {"data", "2027-03-05"},
       {"valor", "12.500,00"},
       {"vendedor", to_text(ana_)},
       {"classes", to_text(class_)},
       {"contato", to_text(number("select ritem from agrupamento where rpapel = " + to_text(role_)))}});
  EXPECT_NE(get("/negocios").find("Troca das gôndolas"), std::string::npos);
  EXPECT_EQ(submit(deal + "/fechar", {{"data", "2026-01-15"}, {"valor", "12.000,00"}}), deal);
  const std::string page = get(deal);
  for (const char* text : {"Fechado", "R$\u00a012.000,00", "Rita Nunes", "Software", "Negócio fechado."}) {
    EXPECT_NE(page.find(text), std::string::npos) << text;
  }
  EXPECT_EQ(database_.rows(
                "select i.nome, c.nome, fechamento, valorfechamento from crm_pos_negocio n, item i, item c"
                " where i.oid = n.oid and c.oid = n.rpessoa"),
            "Troca das gôndolas|Mercado Aurora|15/01/2026|12000");
}

TEST_F(Walk, SurvivesWhatBrowsersDoNotSend) {
  EXPECT_EQ(browser_->Put("/empresas/nova", "x", "text/plain")->status, 405);
  EXPECT_EQ(browser_->Delete("/")->status, 405);
  EXPECT_EQ(browser_->Post("/entrar", std::string(600'000, 'a'), "application/x-www-form-urlencoded")->status,
            413);
  EXPECT_EQ(browser_->Post("/entrar", "{}", "application/json")->status, 403);
  EXPECT_EQ(browser_->Head("/entrar")->body, "");
  EXPECT_EQ(browser_->Get("/%2e%2e/%2e%2e/etc/passwd")->status, 404);
  EXPECT_NE(get("/entrar").find("Entrar"), std::string::npos);
}

TEST_F(Walk, ServesManyVisitorsAtOnce) {
  EXPECT_EQ(submit("/entrar", {{"usuario", "ana"}, {"senha", password}}), "/");
  std::vector<std::thread> visitors;
  std::atomic<int> answered = 0;
  for (int i = 0; i < 6; ++i) {
    visitors.emplace_back([&] {
      httplib::Client client("127.0.0.1", host_->port());
      for (int page = 0; page < 10; ++page) {
        const auto response = client.Get(page % 2 == 0 ? "/" : "/empresas", headers());
        if (response && response->status == 200) ++answered;
      }
    });
  }
  for (std::thread& visitor : visitors) visitor.join();
  EXPECT_EQ(answered, 60);
}

TEST_F(Walk, FinishesRequestsUnderWayWhenItStops) {
  const std::string body = "usuario=ana&senha=" + std::string(20'000, 'x');
  std::promise<void> half_sent;
  std::promise<void> stopping;
  std::atomic<int> status = 0;
  std::thread visitor([&] {
    httplib::Client client("127.0.0.1", host_->port());
    const auto provider = [&](std::size_t offset, std::size_t, httplib::DataSink& sink) {
      const std::size_t half = body.size() / 2;
      if (offset == 0) return sink.write(body.data(), half);
      half_sent.set_value();
      stopping.get_future().wait();
      return sink.write(body.data() + half, body.size() - half);
    };
    const auto response = client.Post("/entrar", body.size(), provider, "application/x-www-form-urlencoded");
    if (response) status = response->status;
  });
  half_sent.get_future().wait();
  // A thread of the host has to have taken the connection up.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  host_->stop();
  stopping.set_value();
  visitor.join();
  listener_.join();
  EXPECT_EQ(status, 403);
  EXPECT_FALSE(httplib::Client("127.0.0.1", host_->port()).Get("/entrar"));
}

}  // namespace
}  // namespace pradelis::tests
