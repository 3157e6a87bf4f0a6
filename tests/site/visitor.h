#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "site/apartment.h"
#include "site/site.h"
#include "tests/support/database.h"

namespace pradelis::tests {

using Fields = std::vector<std::pair<std::string, std::string>>;

/// A browser without network: keeps its cookies and sends the secret of the form that it has before it.
class Visitor {
 public:
  explicit Visitor(site::Site& site) : site_(site) {}

  site::Response get(const std::string& target);
  /// Opens a form, unless it is the page that came last, and sends it with the secrets that it carries.
  site::Response post(const std::string& target, Fields fields = {});
  /// Sends a form exactly as it is.
  site::Response send(const std::string& target, const Fields& fields,
                      std::vector<site::Upload> uploads = {});
  /// As `post`, with a file in the field "arquivo".
  site::Response post_file(const std::string& target, const std::string& name, const std::string& content);
  /// The page that a redirection leads to.
  site::Response follow(const site::Response& response);

  /// Opens the login page and logs in. The answer to the login.
  site::Response log_in(const std::string& login, const std::string& password, const Fields& more = {});

  std::int32_t person = 0;  ///< identity, when logged in by the fixture
  std::string address = "203.0.113.7";
  std::string fetch_site = "same-origin";
  std::map<std::string, std::string> cookies;

 private:
  site::Response answer(site::Request request);

  site::Site& site_;
  std::string secret_;
  std::string target_, guard_;  // of the last page: its address, and the digest that its form carries
};

/// First header of this name; empty when there is none.
std::string header(const site::Response& response, const std::string& name);
/// The identifier at the end of a redirection's address; 0 when it is none.
std::int32_t redirected_to(const site::Response& response);
bool contains(const site::Response& response, const std::string& text);

/// A site over a database of its own: Helena leads, Ana and Bruno work in two groups below her.
class SiteTest : public ::testing::Test {
 protected:
  static constexpr const char* password = "senha-boa";

  SiteTest();
  ~SiteTest() override;

  /// A visitor who is logged in.
  Visitor logged_in(const std::string& login);
  /// Registers a company through the pages; gives its identifier.
  std::int32_t add_company(Visitor& visitor, const std::string& name, bool client = false);
  std::int32_t add_deal(Visitor& visitor, std::int32_t company, const std::string& name);
  std::int32_t add_contact(Visitor& visitor, std::int32_t company, const std::string& name);
  /// Logs an activity on a company, or on one of its deals; `more` plans the next contact.
  std::int32_t add_activity(Visitor& visitor, std::int32_t company, std::int32_t deal,
                            const std::string& note, Fields more = {});
  std::int32_t add_file(Visitor& visitor, std::int32_t company, const std::string& name,
                        const std::string& content);
  std::int32_t number(const std::string& sql);
  /// Changes whenever anything was written to the database.
  std::int32_t version() { return number("pragma data_version"); }

  TemporaryDatabase database_;
  site::ApplicationSettings settings_{database_.connection_string()};
  site::Site site_{settings_};
  std::int32_t top_ = 0, east_ = 0, west_ = 0;
  std::int32_t ana_ = 0, bruno_ = 0, helena_ = 0;
  std::int32_t role_ = 0, reason_ = 0, class_ = 0, kind_ = 0;
};

}  // namespace pradelis::tests
