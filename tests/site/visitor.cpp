#include "tests/site/visitor.h"

#include <algorithm>

#include "component/crm.h"
#include "component/thread_state.h"
#include "site/format.h"
#include "site/identifiers.h"
#include "site/reference.h"
#include "site/rows.h"
#include "site/salespeople.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::tests {

namespace {

/// The value of the last hidden field of this name; empty when there is none.
std::string hidden_value(const site::Response& page, const std::string& name) {
  const std::string marker = "name=\"" + name + "\" value=\"";
  const std::size_t field = page.body.rfind(marker);
  if (field == std::string::npos) return {};
  const std::size_t begin = field + marker.size();
  return page.body.substr(begin, page.body.find('"', begin) - begin);
}

}  // namespace

site::Response Visitor::answer(site::Request request) {
  const std::size_t question = request.target.find('?');
  request.path = site::url_decode(request.target.substr(0, question), false);
  if (question != std::string::npos)
    request.query = site::Parameters::parse(request.target.substr(question + 1));
  request.cookies = cookies;
  request.address = address;
  request.fetch_site = fetch_site;
  site::Response response = site_.answer(request);
  for (const auto& [name, value] : response.headers) {
    if (name != "Set-Cookie") continue;
    const std::size_t equals = value.find('=');
    const std::string cookie = value.substr(0, equals);
    cookies[cookie] = value.substr(equals + 1, value.find(';') - equals - 1);
    if (value.find("Max-Age=0") != std::string::npos) cookies.erase(cookie);
  }
  const std::string secret = hidden_value(response, "_token");
  if (!secret.empty()) secret_ = secret;
  guard_ = hidden_value(response, "_versao");
  target_ = response.status == 303 ? std::string() : request.target;
  return response;
}

site::Response Visitor::get(const std::string& target) {
  site::Request request;
  request.method = "GET";
  request.target = target;
  return answer(std::move(request));
}

site::Response Visitor::post_file(const std::string& target, const std::string& name,
                                  const std::string& content) {
  return send(target, {{"_token", secret_}}, {{"arquivo", name, content}});
}

site::Response Visitor::send(const std::string& target, const Fields& fields,
                             std::vector<site::Upload> uploads) {
  std::string form;
  for (const auto& [name, value] : fields)
    form += site::url_encode(name) + "=" + site::url_encode(value) + "&";
  site::Request request;
  request.method = "POST";
  request.target = target;
  request.form = site::Parameters::parse(form);
  request.uploads = std::move(uploads);
  return answer(std::move(request));
}

site::Response Visitor::post(const std::string& target, Fields fields) {
  if (target_ != target) get(target);
  fields.emplace_back("_token", secret_);
  fields.emplace_back("_versao", guard_);
  return send(target, fields);
}

site::Response Visitor::follow(const site::Response& response) {
  EXPECT_EQ(response.status, 303) << response.body;
  return get(header(response, "Location"));
}

site::Response Visitor::log_in(const std::string& login, const std::string& password, const Fields& more) {
  get("/entrar");
  Fields fields = {{"usuario", login}, {"senha", password}};
  fields.insert(fields.end(), more.begin(), more.end());
  return post("/entrar", fields);
}

std::string header(const site::Response& response, const std::string& name) {
  const auto found = std::find_if(response.headers.begin(), response.headers.end(),
                                  [&](const auto& entry) { return entry.first == name; });
  return found == response.headers.end() ? std::string() : found->second;
}

std::int32_t redirected_to(const site::Response& response) {
  const std::string address = header(response, "Location");
  return site::parse_identifier(address.substr(address.rfind('/') + 1)).value_or(0);
}

bool contains(const site::Response& response, const std::string& text) {
  return response.body.find(text) != std::string::npos;
}

SiteTest::SiteTest() {
  const site::Apartment apartment(settings_);
  const auto crm = std::make_shared<component::CRM>();
  role_ = site::add_entry(*crm, site::ReferenceList::Roles, "Comprador", 7);
  reason_ = site::add_entry(*crm, site::ReferenceList::LossReasons, "Preço", 7);
  class_ = site::add_entry(*crm, site::ReferenceList::ProductClasses, "Software", 7);
  kind_ = site::add_entry(*crm, site::ReferenceList::ActivityKinds, "Ligação", 7);
  crm->Cadastrar_Cidade(2325, "19", "", "Campinas", 7);
  const auto add_group = [&](const char* name, std::int32_t parent) {
    crm->cGrupoUsuarios()->Cadastrar_Grupo(7, name, parent);
    return number("select max(oid) from item where cid = 18");
  };
  top_ = add_group("Diretoria", 7);
  east_ = add_group("Leste", top_);
  west_ = add_group("Oeste", top_);
  const auto add_person = [&](const char* login, const char* name, std::int32_t group) {
    site::NewSalesperson person;
    person.name = name;
    person.login = login;
    person.password = password;
    person.groups = {group};
    person.city = site::find_city(*crm, "Campinas").value();
    return site::register_salesperson(*crm, person, 7, 0);
  };
  helena_ = add_person("helena", "Helena Prado", top_);
  ana_ = add_person("ana", "Ana Moraes", east_);
  bruno_ = add_person("bruno", "Bruno D'Ávila", west_);
}

SiteTest::~SiteTest() { component::reset_thread_state(); }

std::int32_t SiteTest::number(const std::string& sql) { return to_int32(database_.value(sql)); }

Visitor SiteTest::logged_in(const std::string& login) {
  Visitor visitor(site_);
  const site::Response response =
      visitor.log_in(login, login == "TARVONEL" ? maintenance_password : password);
  EXPECT_EQ(response.status, 303) << response.body;
  visitor.person = login == "helena" ? helena_ : login == "ana" ? ana_ : login == "bruno" ? bruno_ : 7;
  visitor.get("/");
  return visitor;
}

std::int32_t SiteTest::add_company(Visitor& visitor, const std::string& name, bool client) {
  const site::Response response = visitor.post("/empresas/nova", {{"nome", name},
                                                                  {"razao", name + " Ltda."},
                                                                  {"situacao", client ? "2121" : "2127"},
                                                                  {"vendedor", to_text(visitor.person)},
                                                                  {"cidade", "campinas"}});
  EXPECT_EQ(response.status, 303) << response.body;
  return redirected_to(response);
}

std::int32_t SiteTest::add_deal(Visitor& visitor, std::int32_t company, const std::string& name) {
  const site::Response response =
      visitor.post(concat("/empresas/", company, "/negocios/novo"),
                   {{"nome", name}, {"valor", "1.500,00"}, {"vendedor", to_text(visitor.person)}});
  EXPECT_EQ(response.status, 303) << response.body;
  return redirected_to(response);
}

std::int32_t SiteTest::add_contact(Visitor& visitor, std::int32_t company, const std::string& name) {
  const site::Response response = visitor.post(concat("/empresas/", company, "/contatos/novo"),
                                               {{"nome", name}, {"cargo", to_text(role_)}});
  EXPECT_EQ(response.status, 303) << response.body;
  return number("select max(ritem) from agrupamento where rpapel = " + to_text(role_));
}

std::int32_t SiteTest::add_activity(Visitor& visitor, std::int32_t company, std::int32_t deal,
                                    const std::string& note, Fields more) {
  Fields fields = {{"atividade", to_text(kind_)},
                   {"data", site::iso_day(today())},
                   {"observacao", note},
                   {"responsavel", to_text(visitor.person)}};
  if (deal != 0) fields.emplace_back("negocio", to_text(deal));
  fields.insert(fields.end(), more.begin(), more.end());
  const site::Response response = visitor.post(concat("/empresas/", company, "/atividades/nova"), fields);
  EXPECT_EQ(response.status, 303) << response.body;
  return number("select max(oid) from crm_atividade");
}

std::int32_t SiteTest::add_file(Visitor& visitor, std::int32_t company, const std::string& name,
                                const std::string& content) {
  const site::Response response =
      visitor.post_file(concat("/empresas/", company, "/arquivos/novo"), name, content);
  EXPECT_EQ(response.status, 303) << response.body;
  return number("select max(id) from crm_arquivo");
}

}  // namespace pradelis::tests
