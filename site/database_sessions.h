#pragma once

#include <functional>

#include "site/session_store.h"

namespace pradelis::component {
class CRM;
}

namespace pradelis::site {

/// Sessions in the database's table `sessaodosite`: any host that has the same database can serve any
/// request, and a host that stops logs nobody out. The table holds a digest of a session's name, so that
/// whoever reads it cannot take a session over.
///
/// A request costs one query. A row is written when something changes, and once in a minute of use.
/// Members raise what the database raises.
class DatabaseSessions : public SessionStore {
 public:
  /// Whole minutes since 1970: hosts of different time zones agree on them.
  using Minutes = std::int32_t;

  static Minutes present_minute();

  /// \param now  the clock by which sessions end
  explicit DatabaseSessions(std::function<Minutes()> now = present_minute) : now_(std::move(now)) {}

  std::string open(const UserPtr& user) override;
  std::optional<Session> find(const std::string& name) override;
  void replace_user(const std::string& name, const UserPtr& user) override;
  UserPtr close(const std::string& name) override;
  void leave_message(const std::string& name, const std::string& message) override;
  std::vector<UserPtr> close_idle() override;
  /// None: the other hosts go on serving them, and so does this one when it is started again.
  std::vector<UserPtr> close_with_process() override { return {}; }
  std::int32_t team_version() override;
  void team_changed() override;

 private:
  /// The last minute of use of sessions that have been idle for as long as they may.
  Minutes oldest_use() const { return now_() - static_cast<Minutes>(idle_limit.count()); }
  UserPtr close(component::CRM& crm, const std::string& key, const std::string& kept,
                const std::string& condition);

  std::function<Minutes()> now_;
};

}  // namespace pradelis::site
