#include "site/session_store.h"

#include <sys/random.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace pradelis::site {

std::string random_token(int bits) {
  std::string bytes(static_cast<std::size_t>(bits) / 8, '\0');
  if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
    throw std::system_error(errno, std::generic_category(), "getrandom");
  }
  static constexpr std::string_view digits = "0123456789abcdef";
  std::string token;
  for (const char c : bytes) {
    token += digits[static_cast<unsigned char>(c) >> 4U];
    token += digits[static_cast<unsigned char>(c) & 15U];
  }
  return token;
}

std::string SessionStore::open(UserPtr user) {
  std::string name = random_token();
  Entry entry{{std::move(user), random_token()}, {}, now_()};
  const std::lock_guard lock(mutex_);
  entries_.emplace(name, std::move(entry));
  return name;
}

std::optional<SessionStore::Session> SessionStore::find(const std::string& name) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found == entries_.end() || idle(found->second)) return std::nullopt;
  found->second.used = now_();
  return found->second.session;
}

void SessionStore::replace_user(const std::string& name, UserPtr user) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found != entries_.end()) found->second.session.user = std::move(user);
}

UserPtr SessionStore::close(const std::string& name) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found == entries_.end()) return nullptr;
  UserPtr user = found->second.session.user;
  entries_.erase(found);
  return user;
}

void SessionStore::leave_message(const std::string& name, std::string message) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  if (found != entries_.end()) found->second.message = std::move(message);
}

std::string SessionStore::take_message(const std::string& name) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(name);
  return found == entries_.end() ? std::string() : std::exchange(found->second.message, {});
}

std::vector<UserPtr> SessionStore::close_idle() {
  std::vector<UserPtr> users;
  const std::lock_guard lock(mutex_);
  std::erase_if(entries_, [&](const auto& entry) {
    if (!idle(entry.second)) return false;
    users.push_back(entry.second.session.user);
    return true;
  });
  return users;
}

std::vector<UserPtr> SessionStore::close_all() {
  std::vector<UserPtr> users;
  const std::lock_guard lock(mutex_);
  for (auto& [name, entry] : entries_) users.push_back(entry.session.user);
  entries_.clear();
  return users;
}

}  // namespace pradelis::site
