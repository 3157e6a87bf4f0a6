#include "site/router.h"

#include "site/identifiers.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// The identifiers at the {} of `pattern`; false when `path` is not of its form.
bool matches(std::string_view pattern, std::string_view path, std::vector<std::int32_t>& identifiers) {
  identifiers.clear();
  const auto expected = split(pattern, '/');
  const auto actual = split(path, '/');
  if (expected.size() != actual.size()) return false;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    if (expected[i] != "{}") {
      if (expected[i] != actual[i]) return false;
    } else if (const auto identifier = parse_identifier(actual[i])) {
      identifiers.push_back(*identifier);
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace

void Router::get(std::string pattern, void (*handler)(Context&), Access access) {
  routes_.push_back({"GET", std::move(pattern), handler, access});
}

void Router::post(std::string pattern, void (*handler)(Context&), Access access) {
  routes_.push_back({"POST", std::move(pattern), handler, access});
}

Router::Match Router::find(std::string_view method, std::string_view path) const {
  Match match;
  for (const Route& route : routes_) {
    if (!matches(route.pattern, path, match.identifiers)) continue;
    if (route.method == method) {
      match.route = &route;
      return match;
    }
    match.other_method = true;
  }
  return match;
}

}  // namespace pradelis::site
