#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pradelis::site {

class Context;

enum class Access { Everyone, LoggedIn };

struct Route {
  std::string method;   ///< "GET" changes nothing; "POST" may, and carries the form's token
  std::string pattern;  ///< "/empresas/{}/alterar": each {} is an identifier
  void (*handler)(Context&);
  Access access;
};

/// Finds the page of an address.
class Router {
 public:
  void get(std::string pattern, void (*handler)(Context&), Access access = Access::LoggedIn);
  void post(std::string pattern, void (*handler)(Context&), Access access = Access::LoggedIn);

  struct Match {
    const Route* route = nullptr;           ///< none when no page has this address and method
    bool other_method = false;              ///< whether a page of another method has this address
    std::vector<std::int32_t> identifiers;  ///< for each {} of the pattern
  };
  Match find(std::string_view method, std::string_view path) const;

  const std::vector<Route>& routes() const { return routes_; }

 private:
  std::vector<Route> routes_;
};

}  // namespace pradelis::site
