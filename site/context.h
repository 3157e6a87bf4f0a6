#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "component/crm.h"
#include "site/apartment.h"
#include "site/form.h"
#include "site/request.h"
#include "site/session_store.h"
#include "site/view.h"
#include "site/visibility.h"

namespace pradelis::site {

class Site;

struct Link {
  std::string address;
  std::string text;
};

/// What stands around a form.
struct FormPage {
  std::string title;
  std::string area;         ///< entry of the menu
  std::string button;       ///< what sending the form does
  std::vector<Link> trail;  ///< the way here, from the area's first page; cancelling leads to the last
  std::string lead = {};    ///< a line under the title
  bool danger = false;      ///< whether sending it gives something up
  std::vector<std::string> details = {};  ///< lines under that
  std::string deletion = {};              ///< where the record can be deleted; empty for nowhere
};

/// What a page works with: the request, the component, who asks, and the ways to answer.
class Context {
 public:
  Context(Site& site, const Request& request, Response& response, Apartment& apartment);
  ~Context();
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  Site& site() { return site_; }
  const Request& request() const { return request_; }
  Response& response() { return response_; }

  /// Identifiers of the address, in order.
  std::int32_t id(std::size_t index = 0) const { return identifiers_.at(index); }
  void set_identifiers(std::vector<std::int32_t> identifiers) { identifiers_ = std::move(identifiers); }

  /// The request's business object, created at first use.
  component::CRM& crm();

  /// Finds who asks by his cookie; false when nobody is logged in.
  bool find_session();
  bool logged_in() const { return session_.user != nullptr; }
  /// Who asks. Only on pages for those who are logged in.
  const User& user() const { return *session_.user; }
  /// Identity of who asks.
  std::int32_t person() const { return session_.user->person; }
  /// What he may see and change.
  const Visibility& visible();
  /// Refuses with 404 those who administer no group.
  void require_administrator();
  /// Refuses with 404 everybody but the maintenance user.
  void require_maintenance() const;
  /// The secret that his forms carry.
  const std::string& token() const { return session_.token; }

  /// Starts a session for `user` under a new cookie, in place of the present one, if any.
  void log_in(const UserPtr& user);
  /// Ends the session; gives its user.
  UserPtr log_out();

  /// Answers with a page. `area` marks the menu's entry ("empresas", ...).
  void show(const std::string& template_name, const std::string& title, const std::string& area, View view);
  /// Answers with a page that is a form. One that was sent and refused is answered with status 422.
  void show_form(const Form& form, const FormPage& page);
  /// Sends the browser on. `message` shows on the next page.
  void redirect(const std::string& address, const std::string& message = {});
  /// Answers with data for a script.
  void send_json(std::string json);
  /// Answers with a file that the browser saves as NAME-aaaa-mm-dd.csv.
  void send_csv(const std::string& name, std::string csv);
  /// Answers with a file to keep, never to be shown or run by the browser.
  void send_file(const std::string& name, std::string content);
  /// Answers with an error page.
  void show_error(int status);

 private:
  View frame(const std::string& title, const std::string& area);
  /// Reads again what the user may see. False when his account was deleted, which ends the session.
  bool refresh_user();
  void set_cookie(const std::string& value, bool expired);

  Site& site_;
  const Request& request_;
  Response& response_;
  Apartment& apartment_;
  std::vector<std::int32_t> identifiers_;
  std::shared_ptr<component::CRM> crm_;
  std::unique_ptr<Visibility> visible_;
  std::string session_name_;
  Session session_;
};

/// Runs what a form does, and puts the component's refusal, or a failure, into the form. False when it
/// failed; the failure's particulars are in the log.
bool attempt(Form& form, const std::function<void()>& action);

}  // namespace pradelis::site
