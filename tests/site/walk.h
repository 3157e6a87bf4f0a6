#pragma once

#include <httplib.h>

#include <memory>
#include <string>
#include <thread>

#include "site/host.h"
#include "tests/site/visitor.h"

namespace pradelis::tests {

/// The site on a free port of this machine, and a browser that talks to it.
class Walk : public SiteTest {
 protected:
  Walk() {
    options_.port = 0;
    options_.threads = 4;
    host_ = std::make_unique<site::Host>(site_, options_);
    EXPECT_TRUE(host_->bind());
    listener_ = std::thread([this] { host_->run(); });
    browser_ = std::make_unique<httplib::Client>("127.0.0.1", host_->port());
  }
  ~Walk() override { stop(); }

  void stop() {
    if (!listener_.joinable()) return;
    host_->stop();
    listener_.join();
  }

  httplib::Headers headers() const {
    return cookie_.empty() ? httplib::Headers() : httplib::Headers{{"Cookie", cookie_}};
  }

  std::string get(const std::string& target) {
    const auto response = browser_->Get(target, headers());
    EXPECT_TRUE(response && response->status == 200) << target;
    if (!response) return {};
    remember(*response);
    return response->body;
  }

  /// The value of the last hidden field of this name; empty when there is none.
  static std::string hidden_value(const std::string& page, const std::string& name) {
    const std::string marker = "name=\"" + name + "\" value=\"";
    const std::size_t begin = page.rfind(marker);
    if (begin == std::string::npos) return {};
    return page.substr(begin + marker.size(), page.find('"', begin + marker.size()) - begin - marker.size());
  }

  static std::string secret_of(const std::string& page) { return hidden_value(page, "_token"); }

  void log_in(const std::string& login) {
    cookie_.clear();
    submit("/entrar", {{"usuario", login}, {"senha", password}});
  }

  /// Opens a form, fills it in and sends it; gives the address that it leads to.
  std::string submit(const std::string& target, Fields fields) {
    const std::string page = get(target);
    httplib::Params params = {{"_token", hidden_value(page, "_token")},
                              {"_versao", hidden_value(page, "_versao")}};
    params.insert(fields.begin(), fields.end());
    const auto response = browser_->Post(target, headers(), params);
    EXPECT_TRUE(response && response->status == 303) << target << (response ? response->body : "");
    if (!response) return {};
    remember(*response);
    return response->get_header_value("Location");
  }

  void remember(const httplib::Response& response) {
    if (response.has_header("Set-Cookie")) {
      const std::string cookie = response.get_header_value("Set-Cookie");
      cookie_ = cookie.substr(0, cookie.find(';'));
    }
  }

  site::ServeOptions options_;
  std::unique_ptr<site::Host> host_;
  std::thread listener_;
  std::unique_ptr<httplib::Client> browser_;
  std::string cookie_;
};

}  // namespace pradelis::tests
