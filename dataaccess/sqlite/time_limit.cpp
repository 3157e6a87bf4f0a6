#include "dataaccess/sqlite/time_limit.h"

#include <sqlite3.h>

#include <algorithm>
#include <thread>

namespace pradelis::dataaccess::sqlite {

namespace {
constexpr int steps_between_looks = 10'000;  // of SQLite's virtual machine, some 0.2 ms
}

void TimeLimit::watch(sqlite3* database, std::optional<int> busy_milliseconds) {
  if (busy_milliseconds) busy_ = std::chrono::milliseconds(*busy_milliseconds);
  sqlite3_progress_handler(database, steps_between_looks, &on_progress, this);
  sqlite3_busy_handler(database, &on_busy, this);
}

bool TimeLimit::is_over() noexcept {
  if (seconds_ == 0) return false;
  const Clock::time_point now = Clock::now();
  if (!running_) {
    running_ = true;
    start_ = now;
  }
  return now - start_ >= std::chrono::seconds(seconds_);
}

int TimeLimit::on_progress(void* self) noexcept { return static_cast<TimeLimit*>(self)->is_over() ? 1 : 0; }

// Waits a little longer each time; 0 gives up.
int TimeLimit::on_busy(void* self, int attempts) noexcept {
  TimeLimit& limit = *static_cast<TimeLimit*>(self);
  if (limit.is_over()) return 0;
  if (attempts == 0) limit.busy_since_ = Clock::now();
  if (limit.busy_ && Clock::now() - limit.busy_since_ >= *limit.busy_) return 0;
  std::this_thread::sleep_for(std::chrono::milliseconds(std::min(1 + 2 * attempts, 25)));
  return 1;
}

}  // namespace pradelis::dataaccess::sqlite
