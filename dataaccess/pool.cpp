#include "dataaccess/pool.h"

#include <algorithm>

namespace pradelis::dataaccess {

namespace {
constexpr std::size_t most_idle = 32;             // for one database and mode
constexpr std::chrono::seconds longest_idle{60};  // beyond those that the driver keeps
// A file is asked for again and again by the nodes of a tree: it does not go away between two of them.
constexpr std::chrono::milliseconds trusted_for{5};
}  // namespace

std::unique_ptr<LiveConnection> Pool::take(const ConnectionSettings& settings) {
  const View key{settings.connection_string, settings.mode};
  for (Idle idle = take_idle(key); idle.connection; idle = take_idle(key)) {
    if (works(idle)) return std::move(idle.connection);
  }
  return std::make_unique<LiveConnection>(driver_for(settings.connection_string), settings);
}

bool Pool::works(const Idle& idle) {
  LiveConnection& live = *idle.connection;
  if (live.traits().remote) return live.usable();
  if (live.connection().lost()) return false;
  return Clock::now() - idle.since < trusted_for || live.connection().alive();
}

Pool::Idle Pool::take_idle(const View& key) {
  const std::lock_guard lock(mutex_);
  const auto found = idle_.find(key);
  if (found == idle_.end() || found->second.empty()) return {};
  Idle last = std::move(found->second.back());
  found->second.pop_back();
  return last;
}

void Pool::give_back(const ConnectionSettings& settings,
                     std::unique_ptr<LiveConnection> connection) noexcept {
  connection->connection().tidy();
  if (connection->connection().lost()) return;
  const std::size_t kept = connection->driver().kept_idle();
  std::vector<Idle> closed;  // ends after the lock
  const std::lock_guard lock(mutex_);
  const auto found = idle_.find(View{settings.connection_string, settings.mode});
  std::vector<Idle>& idle =
      found != idle_.end() ? found->second : idle_[{settings.connection_string, settings.mode}];
  const Clock::time_point now = Clock::now();
  idle.push_back({std::move(connection), now});
  const auto expired = std::find_if(idle.begin(), idle.end(),
                                    [now](const Idle& one) { return now - one.since < longest_idle; });
  const auto surplus = static_cast<std::ptrdiff_t>(idle.size() - std::min(idle.size(), most_idle));
  const auto most = static_cast<std::ptrdiff_t>(idle.size() - std::min(idle.size(), kept));
  const auto count = std::min(most, std::max(expired - idle.begin(), surplus));
  closed.assign(std::make_move_iterator(idle.begin()), std::make_move_iterator(idle.begin() + count));
  idle.erase(idle.begin(), idle.begin() + count);
}

void Pool::close_idle() noexcept {
  decltype(idle_) closed;
  const std::lock_guard lock(mutex_);
  closed.swap(idle_);
}

const std::shared_ptr<Pool>& process_pool() {
  static const std::shared_ptr<Pool> pool = std::make_shared<Pool>();
  return pool;
}

void close_idle_connections() noexcept { process_pool()->close_idle(); }

}  // namespace pradelis::dataaccess
