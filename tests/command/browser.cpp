#include "browser.h"

#include <httplib.h>

namespace pradelis::command {
namespace {

void keep_cookies(const httplib::Response& response, std::map<std::string, std::string>& cookies) {
  const auto [first, last] = response.headers.equal_range("Set-Cookie");
  for (auto header = first; header != last; ++header) {
    const std::string& text = header->second;
    const std::size_t equals = text.find('=');
    const std::string name = text.substr(0, equals);
    if (text.find("Max-Age=0") != std::string::npos) {
      cookies.erase(name);
    } else {
      cookies[name] = text.substr(equals + 1, text.find(';') - equals - 1);
    }
  }
}

Page page_of(const httplib::Result& result) {
  if (!result) return {};
  return {result->status, result->get_header_value("Location"), result->body};
}

}  // namespace

std::int32_t Page::redirected_to() const {
  const std::string last = location.substr(location.rfind('/') + 1);
  return last.empty() || last.find_first_not_of("0123456789") != std::string::npos ? 0 : std::stoi(last);
}

std::string Browser::cookie_header() const {
  std::string header;
  for (const auto& [name, value] : cookies_) header += (header.empty() ? "" : "; ") + name + "=" + value;
  return header;
}

Page Browser::get(const std::string& host, const std::string& target) {
  httplib::Client client(host);
  client.set_read_timeout(60);
  const httplib::Result result = client.Get(target, {{"Cookie", cookie_header()}});
  Page page = page_of(result);
  if (!result) return page;
  keep_cookies(*result, cookies_);
  const std::string marker = "name=\"_token\" value=\"";
  const std::size_t token = page.body.rfind(marker);
  if (token != std::string::npos) {
    const std::size_t begin = token + marker.size();
    secret_ = page.body.substr(begin, page.body.find('"', begin) - begin);
  }
  return page;
}

Page Browser::post(const std::string& host, const std::string& target, const Fields& fields) {
  httplib::Client client(host);
  client.set_read_timeout(60);
  httplib::Params form(fields.begin(), fields.end());
  form.emplace("_token", secret_);
  const httplib::Result result = client.Post(target, {{"Cookie", cookie_header()}}, form);
  if (result) keep_cookies(*result, cookies_);
  return page_of(result);
}

Page Browser::fill_in(const std::string& host, const std::string& target, const Fields& fields) {
  const Page form = get(host, target);
  return form.status == 200 ? post(host, target, fields) : form;
}

bool Browser::log_in(const std::string& host, const std::string& login, const std::string& password) {
  return fill_in(host, "/entrar", {{"usuario", login}, {"senha", password}}).status == 303;
}

}  // namespace pradelis::command
