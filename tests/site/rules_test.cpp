#include "site/router.h"
#include "site/templates.h"
#include "tests/site/visitor.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

/// Every page of the site, with identifiers of records that exist.
class EveryPage : public SiteTest {
 protected:
  EveryPage() {
    company_ = add_company(ana_visitor_, "Padaria Central");
    contact_ = add_contact(ana_visitor_, company_, "Rita Nunes");
    deal_ = add_deal(ana_visitor_, company_, "Reforma");
    activity_ = add_activity(ana_visitor_, company_, deal_, "Ligar de novo");
    logged_in("helena").post("/produtos/novo", {{"nome", "Balcão"}});
    Visitor keeper = logged_in("TARVONEL");
    keeper.post("/campos/listas/nova", {{"nome", "Porte"}});
    list_ = number("select max(oid) from listadeobjetos");
    keeper.post("/campos/novo", {{"rotulo", "Porte"}, {"tipo", "2"}, {"lista", to_text(list_)}});
    field_ = number("select max(oid) from dadoadicional");
    keeper.post("/categorias/nova", {{"nome", "Comércio"}});
    category_ = number("select max(oid) from categoria");
    file_ = add_file(ana_visitor_, company_, "notas.txt", "texto");
  }

  std::string address(const std::string& pattern) const {
    const std::int32_t record = pattern.starts_with("/negocios")     ? deal_
                                : pattern.starts_with("/equipe/v")   ? ana_
                                : pattern.starts_with("/equipe")     ? east_
                                : pattern.starts_with("/cidades")    ? city_
                                : pattern.starts_with("/atividades") ? activity_
                                : pattern.starts_with("/produtos")   ? product
                                : pattern.starts_with("/arquivos")   ? file_
                                : pattern.starts_with("/campos/l")   ? list_
                                : pattern.starts_with("/campos")     ? field_
                                : pattern.starts_with("/categorias") ? category_
                                                                     : company_;
    std::string address = pattern;
    for (const std::int32_t id : {record, contact_}) {
      const std::size_t place = address.find("{}");
      if (place != std::string::npos) address.replace(place, 2, to_text(id));
    }
    return address;
  }

  Visitor ana_visitor_ = logged_in("ana");
  static constexpr std::int32_t product = 1;
  std::int32_t company_ = 0, contact_ = 0, deal_ = 0, activity_ = 0, file_ = 0, list_ = 0, field_ = 0,
               category_ = 0, city_ = number("select max(oid) from cidade");
};

TEST_F(EveryPage, ShowsAndChangesNothingWhenItIsOnlyLookedAt) {
  Visitor owner = logged_in("ana");
  Visitor leader = logged_in("helena");
  Visitor maintenance = logged_in("TARVONEL");
  const std::int32_t before = version();
  for (const site::Route& route : site_.router().routes()) {
    if (route.method != "GET" || route.pattern == "/entrar") continue;
    const auto within = [&](const char* area) { return route.pattern.starts_with(area); };
    Visitor& visitor = within("/equipe") || within("/produtos") || within("/cidades")    ? leader
                       : within("/listas") || within("/campos") || within("/categorias") ? maintenance
                                                                                         : owner;
    const site::Response response = visitor.get(address(route.pattern));
    EXPECT_EQ(response.status, 200) << route.pattern << response.body;
    EXPECT_FALSE(contains(response, "{{")) << route.pattern;
  }
  EXPECT_EQ(version(), before);
}

TEST_F(EveryPage, RefusesFormsWithoutTheirSecretAndFromOtherSites) {
  Visitor maintenance = logged_in("TARVONEL");
  const std::int32_t before = version();
  for (const site::Route& route : site_.router().routes()) {
    if (route.method != "POST") continue;
    const std::string target = address(route.pattern);
    EXPECT_EQ(maintenance.send(target, {}).status, 403) << route.pattern;
    EXPECT_EQ(maintenance.send(target, {{"_token", "0123456789abcdef0123456789abcdef"}}).status, 403)
        << route.pattern;
    for (const char* elsewhere : {"cross-site", "same-site"}) {
      maintenance.fetch_site = elsewhere;
      EXPECT_EQ(maintenance.post(target).status, 403) << route.pattern;
    }
    maintenance.fetch_site = "same-origin";
    const site::Response looked_at = maintenance.get(target);
    EXPECT_TRUE(looked_at.status == 200 || looked_at.status == 404 || looked_at.status == 405 ||
                looked_at.status == 303)
        << route.pattern;
  }
  EXPECT_EQ(version(), before);
}

TEST_F(EveryPage, AsksForALogin) {
  Visitor stranger(site_);
  for (const site::Route& route : site_.router().routes()) {
    if (route.access == site::Access::Everyone) continue;
    const site::Response response =
        route.method == "GET" ? stranger.get(address(route.pattern)) : stranger.post(address(route.pattern));
    EXPECT_EQ(response.status, 303) << route.pattern;
    EXPECT_TRUE(header(response, "Location").starts_with("/entrar")) << route.pattern;
  }
}

using Headers = SiteTest;

TEST_F(Headers, GuardEveryAnswer) {
  Visitor visitor(site_);
  const std::string style = site::asset_address("site.css");
  for (const std::string& target : {std::string("/entrar"), std::string("/"), std::string("/nada"), style}) {
    const site::Response response = visitor.get(target);
    EXPECT_TRUE(
        header(response, "Content-Security-Policy").starts_with("default-src 'none'; script-src 'self';"));
    EXPECT_EQ(header(response, "X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(header(response, "X-Frame-Options"), "DENY");
    EXPECT_EQ(header(response, "Cache-Control") == "no-store", target != style) << target;
  }
  EXPECT_EQ(header(visitor.get("/assets/site.css?v=old"), "Cache-Control"), "no-store");
  for (const char* target : {"/assets/", "/assets/../serve.h", "/assets/x", "/empresas/1%00"}) {
    EXPECT_NE(visitor.get(target).status, 200) << target;
  }
}

TEST_F(Headers, RefuseBrokenText) {
  Visitor visitor = logged_in("ana");
  EXPECT_EQ(visitor.get("/empresas?busca=%ff").status, 400);
  EXPECT_EQ(visitor.get("/empresas?busca=%00").status, 400);
  EXPECT_EQ(visitor.get("/sair").status, 405);
}

}  // namespace
}  // namespace pradelis::tests
