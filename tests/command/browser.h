#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace pradelis::command {

struct Page {
  int status = 0;  ///< 0 when the host did not answer
  std::string location;
  std::string body;

  bool contains(const std::string& text) const { return body.find(text) != std::string::npos; }
  /// The identifier at the end of `location`.
  std::int32_t redirected_to() const;
};

/// A browser that keeps its cookies and the secret of the form that it has before it. Any of several hosts
/// can get its next request, as behind a balancer.
class Browser {
 public:
  using Fields = std::vector<std::pair<std::string, std::string>>;

  Page get(const std::string& host, const std::string& target);
  /// Opens the form at `target` and sends it back with these fields.
  Page fill_in(const std::string& host, const std::string& target, const Fields& fields);
  /// Sends a form with the secret of the last page that had one.
  Page post(const std::string& host, const std::string& target, const Fields& fields);
  bool log_in(const std::string& host, const std::string& login, const std::string& password);

 private:
  std::string cookie_header() const;

  std::map<std::string, std::string> cookies_;
  std::string secret_;
};

}  // namespace pradelis::command
