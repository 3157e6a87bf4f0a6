#include <arpa/inet.h>

#include <array>

#include "site/component_text.h"
#include "site/context.h"
#include "site/log.h"
#include "site/pages/pages.h"
#include "site/salespeople.h"
#include "site/secrets.h"
#include "site/site.h"
#include "site/users.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr const char* login_cookie = "pradelis_entrada";
constexpr std::string_view maintenance_login = "TARVONEL";

/// What the salesperson data begins at in `Logar`'s array: set only when exactly one user matched.
constexpr std::size_t salesperson_name = 8;

/// Only addresses of this site are gone back to.
std::string safe_return(const std::string& address) {
  const bool local = address.size() > 1 && address[0] == '/' && address[1] != '/' && address[1] != '\\';
  return local ? address : "/";
}

/// What failures are counted by: a whole network for the newer kind of address, of which everybody
/// has a great many.
std::string throttled_address(const std::string& address) {
  std::array<unsigned char, 16> bytes{};
  if (inet_pton(AF_INET6, address.c_str(), bytes.data()) != 1) return address;
  return std::string(bytes.begin(), bytes.begin() + 8);
}

Form login_form() {
  Form form;
  form.text("usuario", "Usuário").required().literal().limit(60).autocomplete("username");
  form.password("senha", "Senha").required().limit(200).autocomplete("current-password");
  form.password("senha_vendedor", "Senha de vendedor")
      .literal()
      .limit(200)
      .hint("Só se a sua empresa deu a você uma senha de vendedor à parte.");
  return form;
}

/// The login form carries a secret that its cookie holds too: another site knows neither.
void show_login(Context& context, const Form& form) {
  const std::string secret = random_token();
  std::string cookie = std::string(login_cookie) + "=" + secret + "; Path=/entrar; HttpOnly; SameSite=Strict";
  if (context.request().secure) cookie += "; Secure";
  context.response().headers.emplace_back("Set-Cookie", cookie);
  if (form.refused()) context.response().status = 422;
  View view;
  View fields = form.view();
  fields.list("login_fields", {form.view_of("usuario"), form.view_of("senha")});
  fields.list("more_fields", {form.view_of("senha_vendedor")});
  fields.flag("open", !form.text_of("senha_vendedor").empty());
  view.section("form", std::move(fields)).set("secret", secret);
  view.set("action", context.request().target);
  context.show("login", "Entrar", "", std::move(view));
}

bool carries_secret(const Request& request) {
  const auto cookie = request.cookies.find(login_cookie);
  return cookie != request.cookies.end() && !cookie->second.empty() &&
         cookie->second == request.form.get("_token");
}

void refuse_for_now(Context& context, Form& form, std::chrono::seconds wait) {
  form.refuse("Muitas tentativas de entrada. Tente de novo em " + std::to_string(wait.count()) +
              (wait.count() == 1 ? " segundo." : " segundos."));
  show_login(context, form);
  context.response().status = 429;
  context.response().headers.emplace_back("Retry-After", std::to_string(wait.count()));
}

User described(const Variant& information) {
  const auto& elements = information.get<Variant::Array>();
  User user;
  user.person = to_int32(elements.at(0));
  user.name = from_component_text(to_text(elements.at(1)));
  user.login = to_text(elements.at(3));
  if (!elements.at(6).is_empty()) user.usage_session = to_int32(elements.at(6));
  user.information = information;
  user.maintenance = user.login == maintenance_login;
  return user;
}

/// Logs in through the component. Null, with the reason in the form, when it is refused.
UserPtr log_in(Context& context, Form& form) {
  component::CRM& crm = context.crm();
  const std::string& login = form.text_of("usuario");
  const std::string& password = form.text_of("senha");
  const std::string& typed = form.text_of("senha_vendedor");
  const std::int32_t version = context.site().sessions().team_version();
  Variant information;
  UserPtr user;
  attempt(form, [&] {
    const std::string salesperson = typed.empty() ? salesperson_password(crm, login, password) : typed;
    crm.Logar(login, password, information, context.request().address, true, salesperson);
    if (information.get<Variant::Array>().at(salesperson_name).is_empty()) {
      form.refuse("Há mais de uma pessoa com este usuário. Fale com quem administra o sistema.");
      return;
    }
    user = read_user(crm, described(information), version);
  });
  if (!user && !information.is_empty()) {
    // A refusal after the password was right leaves a usage session open.
    const Variant& opened = information.get<Variant::Array>().at(6);
    if (!opened.is_empty()) end_usage_session(crm, to_int32(opened));
  }
  return user;
}

void show_entry(Context& context) {
  if (context.logged_in()) return context.redirect("/");
  show_login(context, login_form());
}

void enter(Context& context) {
  Form form = login_form();
  if (!carries_secret(context.request())) throw Refusal{403};
  if (!form.read(context.request().form)) return show_login(context, form);

  Throttle& throttle = context.site().throttle();
  const std::string account = to_upper(form.text_of("usuario"));
  const std::string address = throttled_address(context.request().address);
  if (const auto wait = throttle.attempt(account, address); wait.count() > 0) {
    return refuse_for_now(context, form, wait);
  }
  const UserPtr user = log_in(context, form);
  if (!user) {
    log_line("entrada recusada a um visitante de " + context.request().address);
    return show_login(context, form);
  }
  throttle.succeeded(account, address);
  context.log_in(user);
  context.redirect(safe_return(context.request().query.get("para")));
}

void leave(Context& context) {
  const UserPtr user = context.log_out();
  if (user) end_usage_session(context.crm(), *user);
  context.redirect("/entrar");
}

}  // namespace

void add_login_pages(Router& router) {
  router.get("/entrar", show_entry, Access::Everyone);
  router.post("/entrar", enter, Access::Everyone);
  router.post("/sair", leave);
}

}  // namespace pradelis::site
