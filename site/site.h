#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>

#include "site/apartment.h"
#include "site/request.h"
#include "site/router.h"
#include "site/session_store.h"
#include "site/throttle.h"

namespace pradelis::site {

/// The site without its host: answers requests. Safe to use from all threads; each thread that calls
/// it is an apartment of its own.
class Site {
 public:
  explicit Site(ApplicationSettings settings);

  /// The page that was asked for, with all headers; failures become error pages.
  Response answer(const Request& request);
  /// The most bytes that a request with files may send: files come only from those who are logged in.
  std::size_t largest_body(const Request& request);
  /// Ends all sessions, in the database too. For the end of the program.
  void close();

  const Router& router() const { return router_; }
  SessionStore& sessions() { return sessions_; }
  Throttle& throttle() { return throttle_; }

  /// Counts the changes of groups and memberships; what users may see is read again after each.
  std::uint64_t team_version() const { return team_version_; }
  void team_changed() { ++team_version_; }

 private:
  void answer_page(const Request& request, Response& response);
  void run(const Request& request, Response& response, Apartment& apartment);
  void close_idle_sessions();
  void end_usage(const std::vector<UserPtr>& users);

  ApplicationSettings settings_;
  Router router_;
  SessionStore sessions_;
  Throttle throttle_;
  std::atomic<std::uint64_t> team_version_{1};
  std::atomic<std::chrono::steady_clock::rep> last_sweep_{0};
};

}  // namespace pradelis::site
