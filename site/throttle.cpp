#include "site/throttle.h"

#include <algorithm>

namespace pradelis::site {
namespace {

// Above this many entries, those that are due to be forgotten are looked for at each attempt.
constexpr std::size_t large_table = 10'000;

std::chrono::seconds delay_after(int failures, int free, std::chrono::seconds longest) {
  if (failures < free) return std::chrono::seconds(0);
  const int doublings = std::min(failures - free, 20);
  return std::min(std::chrono::seconds(1LL << doublings), longest);
}

}  // namespace

std::chrono::seconds Throttle::wait_of(const Table& table, const std::string& key, int free,
                                       std::chrono::seconds longest, Clock::time_point now) const {
  const auto found = table.find(key);
  if (found == table.end() || now - found->second.last > memory) return std::chrono::seconds(0);
  const auto until = found->second.last + delay_after(found->second.count, free, longest);
  return until <= now ? std::chrono::seconds(0) : std::chrono::ceil<std::chrono::seconds>(until - now);
}

void Throttle::count(Table& table, const std::string& key, Clock::time_point now) {
  if (table.size() > large_table) {
    std::erase_if(table, [&](const auto& entry) { return now - entry.second.last > memory; });
  }
  Failures& failures = table[key];
  failures.count = now - failures.last > memory ? 1 : failures.count + 1;
  failures.last = now;
}

std::chrono::seconds Throttle::attempt(const std::string& account, const std::string& address) {
  const std::lock_guard lock(mutex_);
  const auto now = now_();
  const auto wait = std::max(wait_of(accounts_, account, free_per_account, longest_for_account, now),
                             wait_of(addresses_, address, free_per_address, longest_for_address, now));
  if (wait.count() == 0) {
    count(accounts_, account, now);
    count(addresses_, address, now);
  }
  return wait;
}

void Throttle::succeeded(const std::string& account, const std::string& address) {
  const std::lock_guard lock(mutex_);
  accounts_.erase(account);
  const auto found = addresses_.find(address);
  if (found != addresses_.end() && --found->second.count <= 0) addresses_.erase(found);
}

}  // namespace pradelis::site
