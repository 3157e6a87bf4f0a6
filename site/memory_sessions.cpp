#include "site/memory_sessions.h"

#include "site/secrets.h"

namespace pradelis::site {

std::string MemorySessions::open(const UserPtr& user) {
  std::string name = random_token();
  Entry entry{{user, form_token(name), {}, 0}, now_()};
  const std::lock_guard lock(mutex_);
  entries_.emplace(name, std::move(entry));
  return name;
}

std::optional<Session> MemorySessions::find(const std::string& name) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found == entries_.end() || idle(found->second)) return std::nullopt;
  found->second.used = now_();
  Session session = found->second.session;
  session.team_version = team_version_;
  return session;
}

void MemorySessions::replace_user(const std::string& name, const UserPtr& user) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found != entries_.end()) found->second.session.user = user;
}

UserPtr MemorySessions::close(const std::string& name) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found == entries_.end()) return nullptr;
  UserPtr user = found->second.session.user;
  entries_.erase(found);
  return user;
}

void MemorySessions::leave_message(const std::string& name, const std::string& message) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found != entries_.end()) found->second.session.message = message;
}

std::vector<UserPtr> MemorySessions::close_idle() {
  std::vector<UserPtr> users;
  const std::lock_guard lock(mutex_);
  std::erase_if(entries_, [&](const auto& entry) {
    if (!idle(entry.second)) return false;
    users.push_back(entry.second.session.user);
    return true;
  });
  return users;
}

std::vector<UserPtr> MemorySessions::close_with_process() {
  std::vector<UserPtr> users;
  const std::lock_guard lock(mutex_);
  for (auto& [name, entry] : entries_) users.push_back(entry.session.user);
  entries_.clear();
  return users;
}

}  // namespace pradelis::site
