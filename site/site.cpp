#include "site/site.h"

#include <exception>

#include "component/crm.h"
#include "site/context.h"
#include "site/headers.h"
#include "site/log.h"
#include "site/memory_sessions.h"
#include "site/pages/pages.h"
#include "site/templates.h"
#include "site/users.h"
#include "values/convert.h"
#include "values/error.h"

namespace pradelis::site {
namespace {

constexpr std::string_view asset_prefix = "/assets/";
constexpr std::chrono::minutes sweep_interval{1};

/// Browsers say where a request comes from; forms of other sites are refused even before their token.
bool from_elsewhere(const Request& request) {
  return request.fetch_site == "cross-site" || request.fetch_site == "same-site";
}

bool answer_asset(const Request& request, Response& response) {
  if (!request.path.starts_with(asset_prefix) || request.method != "GET") return false;
  const Asset* asset = find_asset(std::string_view(request.path).substr(asset_prefix.size()));
  if (asset == nullptr) return false;
  response.body = asset->content;
  response.content_type = asset->content_type;
  add_security_headers(response, request.query.get("v") == asset->version);
  return true;
}

void log_failure(const Request& request, const std::string& what) {
  log_line(request.method + " " + request.path + ": " + what);
}

/// Runs `page`, and answers with an error page when it fails.
template <class Page>
void guarded(Context& context, const Request& request, Page&& page) {
  try {
    page();
  } catch (const Refusal& refusal) {
    context.show_error(refusal.status);
  } catch (const Error& error) {
    log_failure(request, error.source() + ": " + to_text(error.number()) + " " + error.description());
    context.show_error(500);
  } catch (const std::exception& error) {
    log_failure(request, error.what());
    context.show_error(500);
  }
}

}  // namespace

Site::Site(ApplicationSettings settings, std::unique_ptr<SessionStore> sessions)
    : settings_(std::move(settings)),
      sessions_(sessions ? std::move(sessions) : std::make_unique<MemorySessions>()) {
  add_login_pages(router_);
  add_home_pages(router_);
  add_company_list(router_);
  add_company_pages(router_);
  add_company_detail(router_);
  add_contact_pages(router_);
  add_deal_list(router_);
  add_deal_board(router_);
  add_deal_pages(router_);
  add_deal_state_pages(router_);
  add_activity_pages(router_);
  add_agenda_pages(router_);
  add_product_pages(router_);
  add_file_pages(router_);
  add_extra_field_pages(router_);
  add_extra_field_admin_pages(router_);
  add_choice_list_pages(router_);
  add_category_pages(router_);
  add_group_pages(router_);
  add_salesperson_pages(router_);
  add_hand_over_pages(router_);
  add_deletion_pages(router_);
  add_category_deletion(router_);
  add_deletion_register(router_);
  add_import_pages(router_);
  add_city_pages(router_);
  add_list_pages(router_);
}

Response Site::answer(const Request& request) {
  Response response;
  if (answer_asset(request, response)) return response;
  answer_page(request, response);
  add_security_headers(response, false);
  close_idle_sessions();
  return response;
}

std::size_t Site::largest_body(const Request& request) {
  const auto cookie = request.cookies.find(session_cookie);
  if (cookie == request.cookies.end()) return largest_form;
  const Apartment apartment(settings_);
  try {
    return sessions_->find(cookie->second) ? largest_form + largest_file : largest_form;
  } catch (const Error& error) {
    log_failure(request, error.description());
    return largest_form;
  }
}

void Site::answer_page(const Request& request, Response& response) {
  Apartment apartment(settings_);
  try {
    run(request, response, apartment);
  } catch (const std::exception& error) {
    log_failure(request, error.what());
    response.status = 500;
    response.body = "Falha no servidor.";
  }
}

void Site::run(const Request& request, Response& response, Apartment& apartment) {
  Context context(*this, request, response, apartment);
  guarded(context, request, [&] {
    if (request.oversized) throw Refusal{413};
    if (request.malformed) throw Refusal{400};
    if (!request.query.well_formed() || !request.form.well_formed()) throw Refusal{400};
    const bool known = context.find_session();
    const Router::Match match = router_.find(request.method, request.path);
    if (match.route == nullptr) throw Refusal{match.other_method ? 405 : 404};
    if (match.route->access == Access::LoggedIn && !known) {
      const bool returns = request.method == "GET" && request.target != "/";
      return context.redirect(returns ? "/entrar?para=" + url_encode(request.target) : "/entrar");
    }
    const bool changes = request.method == "POST";
    if (changes && from_elsewhere(request)) throw Refusal{403};
    if (changes && match.route->access == Access::LoggedIn && request.form.get("_token") != context.token()) {
      throw Refusal{403};
    }
    context.set_identifiers(match.identifiers);
    match.route->handler(context);
  });
}

void Site::close_idle_sessions() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  auto last = last_sweep_.load();
  const auto interval = std::chrono::steady_clock::duration(sweep_interval).count();
  if (now - last < interval || !last_sweep_.compare_exchange_strong(last, now)) return;
  end_sessions(&SessionStore::close_idle);
}

void Site::close() { end_sessions(&SessionStore::close_with_process); }

void Site::end_sessions(std::vector<UserPtr> (SessionStore::*ending)()) {
  Apartment apartment(settings_);
  try {
    const std::vector<UserPtr> users = (*sessions_.*ending)();
    if (users.empty()) return;
    component::CRM crm;
    for (const UserPtr& user : users) end_usage_session(crm, *user);
  } catch (const Error& error) {
    log_line(error.source() + ": " + error.description());
  }
}

}  // namespace pradelis::site
