#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
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
  std::int32_t team_version = 0;              ///< state of the groups that `information` was read from
};
using UserPtr = std::shared_ptr<const User>;

/// What a page gets of its visitor's session.
struct Session {
  UserPtr user;
  std::string token;              ///< what every form of this visitor carries
  std::string message;            ///< left for the visitor's next page; empty for none
  std::int32_t team_version = 0;  ///< the present state of the groups
};

/// The logged-in visitors. Safe to use from all threads, each of which is serving a request (`Apartment`).
class SessionStore {
 public:
  /// Sessions end when they have not been used for so long.
  static constexpr std::chrono::minutes idle_limit{30};

  virtual ~SessionStore() = default;

  /// Starts a session and gives its secret name, which only the visitor's cookie holds.
  virtual std::string open(const UserPtr& user) = 0;
  /// The session of this name, unless it has been idle too long; it counts as used now.
  virtual std::optional<Session> find(const std::string& name) = 0;
  /// Puts a newer state of the user in place. Nothing when the session has ended.
  virtual void replace_user(const std::string& name, const UserPtr& user) = 0;
  /// Ends a session; gives its user, or null when there is none, or somebody else has just ended it.
  virtual UserPtr close(const std::string& name) = 0;

  /// Keeps a message for the visitor's next page; an empty one takes back what was left.
  virtual void leave_message(const std::string& name, const std::string& message) = 0;

  /// Ends the sessions that have been idle too long; gives their users.
  virtual std::vector<UserPtr> close_idle() = 0;
  /// Ends the sessions that cannot outlive this process; gives their users.
  virtual std::vector<UserPtr> close_with_process() = 0;

  /// Counts the changes of groups and memberships; what users may see is read again after each.
  virtual std::int32_t team_version() = 0;
  virtual void team_changed() = 0;
};

/// What the forms of a session carry: other sites cannot know it, and it does not tell the name.
std::string form_token(const std::string& session_name);

}  // namespace pradelis::site
