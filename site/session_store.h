#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "values/variant.h"

namespace pradelis::site {

/// The cookie that holds the secret name of a visitor's session.
inline constexpr const char* session_cookie = "pradelis_sessao";

/// Who is logged in, as read when he logged in or when groups last changed. Never changed: a new one
/// takes its place.
struct User {
  std::int32_t person = 0;  ///< identity on all pages
  std::string name;
  std::string login;
  std::optional<std::int32_t> usage_session;  ///< as `Logar` gave it
  Variant information;                        ///< the session value "InformacoesUsuario"
  std::vector<std::int32_t> groups;           ///< groups that he may administer
  bool maintenance = false;                   ///< the maintenance user, who administers all groups
  std::uint64_t team_version = 0;             ///< state of the groups that `information` was read from
};
using UserPtr = std::shared_ptr<const User>;

/// `bits` random bits (a multiple of 8) from the system, in hexadecimal digits.
std::string random_token(int bits = 128);

/// The logged-in visitors. Safe to use from all threads.
class SessionStore {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr std::chrono::minutes idle_limit{30};

  /// \param now  the clock by which sessions end
  explicit SessionStore(std::function<Clock::time_point()> now = Clock::now) : now_(std::move(now)) {}

  struct Session {
    UserPtr user;
    std::string token;  ///< what every form of this visitor carries
  };

  /// Starts a session and gives its secret name, which only the visitor's cookie holds.
  std::string open(UserPtr user);
  /// The session of this name, unless it has been idle too long; it counts as used now.
  std::optional<Session> find(const std::string& name);
  /// Puts a newer state of the user in place. Nothing when the session has ended.
  void replace_user(const std::string& name, UserPtr user);
  /// Ends a session; gives its user, or null.
  UserPtr close(const std::string& name);

  /// Keeps a message for the visitor's next page.
  void leave_message(const std::string& name, std::string message);
  /// Takes the message that was left, if any.
  std::string take_message(const std::string& name);

  /// Ends the sessions that have been idle too long; gives their users.
  std::vector<UserPtr> close_idle();
  /// Ends all sessions; gives their users.
  std::vector<UserPtr> close_all();

 private:
  struct Entry {
    Session session;
    std::string message;
    Clock::time_point used;
  };
  bool idle(const Entry& entry) const { return now_() - entry.used > idle_limit; }

  std::function<Clock::time_point()> now_;
  std::mutex mutex_;
  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace pradelis::site
