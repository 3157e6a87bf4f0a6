#include "site/host.h"

#include <httplib.h>

#include <algorithm>
#include <thread>

#include "site/multipart.h"
#include "site/site.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

// The library's own parser of forms with files breaks names at semicolons and may run out of stack on long
// lines: bodies are read plain, under this name for their type.
constexpr const char* multipart_header = "Pradelis-Multipart";
constexpr int fewest_threads = 16;
// Idle connections hold a thread each: browsers open new ones fast enough.
constexpr time_t keep_alive_seconds = 2;

std::map<std::string, std::string> parse_cookies(const httplib::Request& request) {
  std::map<std::string, std::string> cookies;
  const std::string header = request.get_header_value("Cookie");
  for (const std::string_view piece : split(header, ';')) {
    const std::string_view pair = trim(piece);
    const std::size_t equals = pair.find('=');
    if (equals == std::string_view::npos) continue;
    cookies.emplace(pair.substr(0, equals), pair.substr(equals + 1));
  }
  return cookies;
}

/// The visitor's address: the last one that the proxy in front has entered, else the connection's.
std::string visitor_address(const httplib::Request& request, bool behind_proxy) {
  const std::string forwarded = behind_proxy ? request.get_header_value("X-Forwarded-For") : std::string();
  const std::size_t comma = forwarded.rfind(',');
  const std::string_view last =
      trim(std::string_view(forwarded).substr(comma == std::string::npos ? 0 : comma + 1));
  const bool plausible = !last.empty() && last.size() <= 45 &&
                         last.find_first_not_of("0123456789abcdefABCDEF.:") == std::string_view::npos;
  return plausible ? std::string(last) : request.remote_addr;
}

Request convert(const httplib::Request& from, bool behind_proxy) {
  Request request;
  request.method = from.method == "HEAD" ? "GET" : from.method;
  request.target = from.target;
  request.path = from.path;
  const std::size_t question = from.target.find('?');
  if (question != std::string::npos) {
    request.query = Parameters::parse(std::string_view(from.target).substr(question + 1));
  }
  request.cookies = parse_cookies(from);
  request.address = visitor_address(from, behind_proxy);
  request.fetch_site = from.get_header_value("Sec-Fetch-Site");
  request.secure = behind_proxy && from.get_header_value("X-Forwarded-Proto") == "https";
  return request;
}

bool has_type(const httplib::Request& request, std::string_view type) {
  return equal_ignoring_case(
      std::string_view(request.get_header_value("Content-Type")).substr(0, type.size()), type);
}

void hide_multipart(httplib::Headers& headers) {
  const auto type = headers.find("Content-Type");
  const std::string value = type == headers.end() ? std::string() : type->second;
  headers.erase(multipart_header);
  if (!equal_ignoring_case(std::string_view(value).substr(0, 10), "multipart/")) return;
  headers.erase("Content-Type");
  headers.emplace(multipart_header, value);
}

void answer(httplib::Response& to, Response from) {
  to.status = from.status;
  for (const auto& [name, value] : from.headers) to.headers.emplace(name, value);
  if (from.status == 303) return;
  to.headers.emplace("Content-Type", from.content_type);
  to.body = std::move(from.body);
}

void read_form(const httplib::Request& from, const std::string& multipart, const std::string& body,
               Request& request) {
  if (!multipart.empty()) {
    request.malformed = !parse_multipart(multipart, body, request.form, request.uploads);
  } else if (has_type(from, "application/x-www-form-urlencoded")) {
    request.form = Parameters::parse(body);
  }
}

}  // namespace

struct Host::Server {
  Server(Site& to, ServeOptions with) : site(to), options(std::move(with)) {}

  Site& site;
  ServeOptions options;
  httplib::Server http;
  int port = 0;

  void add_handlers();
  void receive(const httplib::Request& from, httplib::Response& to, const httplib::ContentReader& reader);
};

/// Reads a request's body to its end, whatever its size, so that the connection stays in step; forms
/// larger than they may be are not kept.
void Host::Server::receive(const httplib::Request& from, httplib::Response& to,
                           const httplib::ContentReader& reader) {
  Request request = convert(from, options.behind_proxy);
  const std::string multipart = from.get_header_value(multipart_header);
  const std::size_t limit = multipart.empty() ? largest_form : site.largest_body(request);
  std::string body;
  std::size_t size = 0;
  reader([&](const char* data, std::size_t length) {
    size += length;
    if (size <= limit) body.append(data, length);
    return true;
  });
  request.oversized = size > limit;
  if (!request.oversized) read_form(from, multipart, body, request);
  body = {};
  answer(to, site.answer(request));
}

void Host::Server::add_handlers() {
  http.set_pre_routing_handler([this](const httplib::Request& from, httplib::Response& to) {
    // The library calls this before it reads the body, and its request is no constant.
    hide_multipart(const_cast<httplib::Headers&>(from.headers));
    const bool has_body = from.method != "GET" && from.method != "HEAD" && from.method != "OPTIONS";
    if (has_body) return httplib::Server::HandlerResponse::Unhandled;
    answer(to, site.answer(convert(from, options.behind_proxy)));
    return httplib::Server::HandlerResponse::Handled;
  });
  const auto take = [this](const httplib::Request& from, httplib::Response& to,
                           const httplib::ContentReader& reader) { receive(from, to, reader); };
  http.Post(".*", take).Put(".*", take).Patch(".*", take).Delete(".*", take);
}

Host::Host(Site& site, const ServeOptions& options) : server_(std::make_unique<Server>(site, options)) {
  const int machine = 2 * static_cast<int>(std::thread::hardware_concurrency());
  const int threads = options.threads > 0 ? options.threads : std::max(fewest_threads, machine);
  httplib::Server& http = server_->http;
  http.new_task_queue = [threads] { return new httplib::ThreadPool(static_cast<std::size_t>(threads)); };
  http.set_keep_alive_timeout(keep_alive_seconds);
  http.set_tcp_nodelay(true);
  // A proxy may send requests of several visitors over one connection; one that gets out of step must
  // not reach the next visitor.
  if (options.behind_proxy) http.set_keep_alive_max_count(1);
  server_->add_handlers();
}

Host::~Host() = default;

bool Host::bind() {
  const ServeOptions& options = server_->options;
  if (options.port == 0) {
    server_->port = server_->http.bind_to_any_port(options.host);
    return server_->port > 0;
  }
  server_->port = options.port;
  return server_->http.bind_to_port(options.host, options.port);
}

int Host::port() const { return server_->port; }

void Host::run() { server_->http.listen_after_bind(); }

void Host::stop() {
  // A server that has not begun to listen would not notice.
  while (!server_->http.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  server_->http.stop();
}

}  // namespace pradelis::site
