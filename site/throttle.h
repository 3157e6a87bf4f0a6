#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <unordered_map>

namespace pradelis::site {

/// Slows down whoever guesses passwords: after some free attempts on one account or from one address,
/// each failure doubles the time until the next attempt. Names of accounts that do not exist count like
/// those that do. Safe to use from all threads.
class Throttle {
 public:
  using Clock = std::chrono::steady_clock;

  static constexpr int free_per_account = 5;
  static constexpr int free_per_address = 20;
  /// Longest waits. An account's is short: somebody else's guesses must not lock its owner out.
  static constexpr std::chrono::seconds longest_for_account{60};
  static constexpr std::chrono::seconds longest_for_address{900};
  /// After this time without an attempt, failures are forgotten.
  static constexpr std::chrono::hours memory{1};

  explicit Throttle(std::function<Clock::time_point()> now = Clock::now) : now_(std::move(now)) {}

  /// Asks for an attempt. Zero: go ahead, and it counts as failed until `succeeded` is told; so that
  /// attempts made at the same time count too. Otherwise the time to wait, and nothing is counted.
  std::chrono::seconds attempt(const std::string& account, const std::string& address);
  /// The attempt just made was right: forgets the account's failures, and this one of the address.
  void succeeded(const std::string& account, const std::string& address);

 private:
  struct Failures {
    int count = 0;
    Clock::time_point last;
  };
  using Table = std::unordered_map<std::string, Failures>;

  std::chrono::seconds wait_of(const Table& table, const std::string& key, int free,
                               std::chrono::seconds longest, Clock::time_point now) const;
  static void count(Table& table, const std::string& key, Clock::time_point now);

  std::function<Clock::time_point()> now_;
  std::mutex mutex_;
  Table accounts_, addresses_;
};

}  // namespace pradelis::site
