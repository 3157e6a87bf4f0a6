#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "site/parameters.h"

namespace pradelis::site {

/// Sizes in bytes of what a request may send: a form, and a file along with it.
inline constexpr std::size_t largest_form = 512 * 1024;
inline constexpr std::size_t largest_file = 20 * 1024 * 1024;

/// A file that a form sent.
struct Upload {
  std::string field;
  std::string name;  ///< as the browser sent it
  std::string content;
};

/// What a browser asked for.
struct Request {
  std::string method;  ///< "GET" (also for HEAD) or "POST"
  std::string path;    ///< decoded, without the query
  std::string target;  ///< path and query as they came
  Parameters query;
  Parameters form;
  std::vector<Upload> uploads;
  std::map<std::string, std::string> cookies;
  std::string address;     ///< the visitor's network address
  std::string fetch_site;  ///< Sec-Fetch-Site: where the browser says that the request comes from
  bool secure = false;     ///< whether the visitor's connection is encrypted
  bool malformed = false;  ///< whether a form with files could not be taken apart
  bool oversized = false;  ///< whether more was sent than may be (`form` is empty then)
};

/// What it is answered with.
struct Response {
  int status = 200;
  std::string content_type = "text/html; charset=utf-8";
  std::string body;
  std::vector<std::pair<std::string, std::string>> headers;
};

/// Ends a page with an error page of this status (403, 404, ...).
struct Refusal {
  int status;
};

}  // namespace pradelis::site
