#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

struct sqlite3;

namespace pradelis::dataaccess::sqlite {

/// Ends what takes longer than it may: statements that run on, and waits for another writer. The clock
/// is first read when a statement has run for a while, so that a short one never reads it.
class TimeLimit {
 public:
  /// Watches a connection from now on; stays where it is as long as the connection.
  void watch(sqlite3* database, std::optional<int> busy_milliseconds);
  /// What follows may take `seconds`; 0 does not limit it.
  void start(std::int16_t seconds) noexcept {
    seconds_ = seconds;
    running_ = false;
  }

 private:
  using Clock = std::chrono::steady_clock;

  static int on_progress(void* self) noexcept;
  static int on_busy(void* self, int attempts) noexcept;
  bool is_over() noexcept;

  std::optional<std::chrono::milliseconds> busy_;
  std::int16_t seconds_ = 0;
  bool running_ = false;
  Clock::time_point start_;
  Clock::time_point busy_since_;
};

}  // namespace pradelis::dataaccess::sqlite
