#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dataaccess/driver.h"
#include "dataaccess/live_connection.h"

namespace pradelis::dataaccess {

/// The unused connections of the process, by connection string and mode. Its functions may be called
/// from any thread.
class Pool {
 public:
  /// A connection for these settings: an unused one that still works, or a new one. Raises
  /// -2147467259 when the database cannot be reached.
  std::unique_ptr<LiveConnection> take(const ConnectionSettings& settings);
  /// Keeps a connection for the next user. Nothing stands open on it any more.
  void give_back(const ConnectionSettings& settings, std::unique_ptr<LiveConnection> connection) noexcept;
  /// Closes all unused connections.
  void close_idle() noexcept;

 private:
  using Clock = std::chrono::steady_clock;
  using Key = std::pair<std::string, ConnectMode>;
  /// Finds a key without a copy of the connection string.
  struct Before {
    using is_transparent = void;
    template <class Left, class Right>
    bool operator()(const Left& left, const Right& right) const noexcept {
      if (left.second != right.second) return left.second < right.second;
      return std::string_view(left.first) < std::string_view(right.first);
    }
  };
  using View = std::pair<std::string_view, ConnectMode>;
  struct Idle {
    std::unique_ptr<LiveConnection> connection;
    Clock::time_point since;
  };

  Idle take_idle(const View& key);
  static bool works(const Idle& idle);

  std::mutex mutex_;
  std::map<Key, std::vector<Idle>, Before> idle_;  // the last used at the end
};

/// The pool of the process; whoever holds a connection holds it too, so that it ends last.
const std::shared_ptr<Pool>& process_pool();

/// Closes the connections that nobody uses: for a host that stops, or before a database file is moved.
void close_idle_connections() noexcept;

}  // namespace pradelis::dataaccess
