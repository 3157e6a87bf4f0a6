#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <vector>

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
  /// \param sessions  who is logged in; in the memory of the process unless said otherwise
  explicit Site(ApplicationSettings settings, std::unique_ptr<SessionStore> sessions = nullptr);

  /// The page that was asked for, with all headers; failures become error pages.
  Response answer(const Request& request);
  /// The most bytes that a request with files may send: files come only from those who are logged in.
  std::size_t largest_body(const Request& request);
  /// Ends the sessions that end with the program, and their usage sessions in the database.
  void close();

  const Router& router() const { return router_; }
  SessionStore& sessions() { return *sessions_; }
  Throttle& throttle() { return throttle_; }

 private:
  void answer_page(const Request& request, Response& response);
  void run(const Request& request, Response& response, Apartment& apartment);
  void close_idle_sessions();
  /// Ends sessions of the store, those that `ending` ends, and the usage sessions of their users.
  void end_sessions(std::vector<UserPtr> (SessionStore::*ending)());

  ApplicationSettings settings_;
  Router router_;
  std::unique_ptr<SessionStore> sessions_;
  Throttle throttle_;
  std::atomic<std::chrono::steady_clock::rep> last_sweep_{0};
};

}  // namespace pradelis::site
