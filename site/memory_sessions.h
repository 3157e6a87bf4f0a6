#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <unordered_map>

#include "site/session_store.h"

namespace pradelis::site {

/// Sessions in the memory of the process: for one host. They end with it.
class MemorySessions : public SessionStore {
 public:
  using Clock = std::chrono::steady_clock;

  /// \param now  the clock by which sessions end
  explicit MemorySessions(std::function<Clock::time_point()> now = Clock::now) : now_(std::move(now)) {}

  std::string open(const UserPtr& user) override;
  std::optional<Session> find(const std::string& name) override;
  void replace_user(const std::string& name, const UserPtr& user) override;
  UserPtr close(const std::string& name) override;
  void leave_message(const std::string& name, const std::string& message) override;
  std::vector<UserPtr> close_idle() override;
  std::vector<UserPtr> close_with_process() override;
  std::int32_t team_version() override { return team_version_; }
  void team_changed() override { ++team_version_; }

 private:
  struct Entry {
    Session session;
    Clock::time_point used;
  };
  bool idle(const Entry& entry) const { return now_() - entry.used > idle_limit; }

  std::function<Clock::time_point()> now_;
  std::atomic<std::int32_t> team_version_{1};
  std::mutex mutex_;
  std::unordered_map<std::string, Entry> entries_;
};

}  // namespace pradelis::site
