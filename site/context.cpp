#include "site/context.h"

#include <string_view>

#include "site/format.h"
#include "site/log.h"
#include "site/site.h"
#include "site/templates.h"
#include "site/users.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/error.h"

namespace pradelis::site {
namespace {

std::string error_message(int status) {
  switch (status) {
    case 400:
      return "O pedido não pôde ser entendido.";
    case 403:
      return "Este formulário já não vale. Volte, atualize a página e tente de novo.";
    case 404:
      return "A página ou o registro não existe, ou não está entre os que você pode ver.";
    case 405:
      return "Esta página não aceita este tipo de pedido.";
    case 413:
      return "O que foi enviado é grande demais.";
    default:
      return "Algo deu errado do nosso lado. O ocorrido foi registrado; tente de novo em instantes.";
  }
}

std::string error_title(int status) {
  switch (status) {
    case 403:
      return "Formulário vencido";
    case 404:
      return "Não encontrado";
    case 500:
      return "Falha no servidor";
    default:
      return "Pedido recusado";
  }
}

/// The texts that a form sent, without its secrets and what was chosen: identifiers and the like.
std::vector<View> typed_texts(const Parameters& form) {
  std::vector<View> texts;
  for (const auto& [name, value] : form.values()) {
    const bool secret = name.starts_with('_') || name.find("senha") != std::string::npos;
    const bool chosen = value.find_first_not_of("0123456789-/,. ") == std::string::npos;
    if (!secret && !chosen) texts.push_back(View().set("text", value));
  }
  return texts;
}

}  // namespace

Context::Context(Site& site, const Request& request, Response& response, Apartment& apartment)
    : site_(site), request_(request), response_(response), apartment_(apartment) {}

Context::~Context() = default;

component::CRM& Context::crm() {
  if (!crm_) crm_ = std::make_shared<component::CRM>();
  return *crm_;
}

const Visibility& Context::visible() {
  if (!visible_) visible_ = std::make_unique<Visibility>(crm(), user());
  return *visible_;
}

void Context::require_administrator() {
  if (!visible().administers()) throw Refusal{404};
}

void Context::require_maintenance() const {
  if (!user().maintenance) throw Refusal{404};
}

bool Context::find_session() {
  const auto cookie = request_.cookies.find(session_cookie);
  if (cookie == request_.cookies.end()) return false;
  auto session = site_.sessions().find(cookie->second);
  if (!session) return false;
  session_ = std::move(*session);
  session_name_ = cookie->second;
  if (session_.user->team_version != session_.team_version && !refresh_user()) return false;
  apartment_.set_user_information(session_.user->information);
  return true;
}

bool Context::refresh_user() {
  if (!is_live(crm(), *session_.user)) {
    if (const UserPtr ended = site_.sessions().close(session_name_)) end_usage_session(crm(), *ended);
    session_ = {};
    return false;
  }
  session_.user = read_user(crm(), *session_.user, session_.team_version);
  site_.sessions().replace_user(session_name_, session_.user);
  return true;
}

void Context::set_cookie(const std::string& value, bool expired) {
  std::string cookie = std::string(session_cookie) + "=" + value + "; Path=/; HttpOnly; SameSite=Lax";
  if (expired) cookie += "; Max-Age=0";
  if (request_.secure) cookie += "; Secure";
  response_.headers.emplace_back("Set-Cookie", cookie);
}

void Context::log_in(const UserPtr& user) {
  const UserPtr before = site_.sessions().close(session_name_);
  if (before) end_usage_session(crm(), *before);
  set_cookie(site_.sessions().open(user), false);
}

UserPtr Context::log_out() {
  set_cookie("", true);
  return site_.sessions().close(session_name_);
}

View Context::frame(const std::string& title, const std::string& area) {
  View view;
  view.set("title", title).set("style", asset_address("site.css")).set("script", asset_address("site.js"));
  view.set("component_script", asset_address("component.js"));
  view.set("icon", asset_address("icone.svg")).flag("logged_in", logged_in());
  if (!logged_in()) return view;
  view.set("token", token()).set("user_name", user().maintenance ? "Manutenção" : user().name);
  view.flag("administers", visible().administers()).flag("area_" + area);
  view.optional("message", session_.message);
  if (!session_.message.empty()) site_.sessions().leave_message(session_name_, {});
  return view;
}

void Context::show(const std::string& template_name, const std::string& title, const std::string& area,
                   View view) {
  View layout = frame(title, area);
  view.set("title", title);
  if (logged_in()) view.set("token", token());
  layout.set("content", render(template_name, view));
  response_.body = render("layout", layout);
}

void Context::show_form(const Form& form, const FormPage& page) {
  if (form.refused() && request_.method == "POST") response_.status = 422;
  View view;
  std::vector<View> trail;
  for (const Link& link : page.trail)
    trail.push_back(View().set("address", link.address).set("text", link.text));
  view.section("form", form.view()).set("action", request_.target).set("button", page.button);
  view.set("cancel", page.trail.empty() ? "/" : page.trail.back().address).list("trail", std::move(trail));
  std::vector<View> details;
  for (const std::string& line : page.details) details.push_back(View().set("line", line));
  view.flag("detailed", !details.empty()).list("details", std::move(details));
  view.optional("deletion", page.deletion)
      .optional("lead", page.lead)
      .set("kind", page.danger ? "danger" : "primary");
  show("form", page.title, page.area, std::move(view));
}

void Context::send_json(std::string json) {
  response_.content_type = "application/json; charset=utf-8";
  response_.body = std::move(json);
}

void Context::send_csv(const std::string& name, std::string csv) {
  response_.content_type = "text/csv; charset=utf-8";
  response_.headers.emplace_back("Content-Disposition",
                                 "attachment; filename=\"" + name + "-" + iso_day(today()) + ".csv\"");
  response_.body = std::move(csv);
}

void Context::send_file(const std::string& name, std::string content) {
  std::string plain;
  for (const char c : name) {
    const bool safe = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                      std::string_view(" .-_()").find(c) != std::string_view::npos;
    plain += safe ? c : '_';
  }
  response_.content_type = "application/octet-stream";
  response_.headers.emplace_back(
      "Content-Disposition", "attachment; filename=\"" + plain + "\"; filename*=UTF-8''" + url_encode(name));
  response_.body = std::move(content);
}

void Context::redirect(const std::string& address, const std::string& message) {
  if (!message.empty()) site_.sessions().leave_message(session_name_, message);
  response_.status = 303;
  response_.headers.emplace_back("Location", address);
}

void Context::show_error(int status) {
  response_.status = status;
  View view;
  view.set("message", error_message(status)).flag("logged_in", logged_in());
  // Whoever was writing when somebody else deleted the record keeps what he wrote.
  auto texts = status == 404 ? typed_texts(request_.form) : std::vector<View>();
  view.flag("typed", !texts.empty()).list("texts", std::move(texts));
  show("error", error_title(status), "", std::move(view));
}

bool attempt(Form& form, const std::function<void()>& action) {
  try {
    action();
  } catch (const Error& error) {
    if (error.number() == error_number::business_refusal) {
      form.refuse(error.description());
    } else {
      log_line(error.source() + ": " + to_text(error.number()) + " " + error.description());
      form.refuse("O banco de dados não aceitou a operação (" + to_text(error.number()) +
                  "). Tente de novo.");
    }
  }
  return !form.refused();
}

}  // namespace pradelis::site
