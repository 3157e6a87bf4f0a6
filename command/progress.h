#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace pradelis::command {

/// A bar on standard error, when that is a terminal, for work that takes longer than a second.
class Progress {
 public:
  explicit Progress(std::size_t steps);
  /// Wipes the bar away.
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// One more step is done.
  void step();

 private:
  using Clock = std::chrono::steady_clock;

  std::size_t steps_;
  std::size_t done_ = 0;
  std::size_t shown_percent_ = 0;
  Clock::time_point started_ = Clock::now();
  bool terminal_;
};

}  // namespace pradelis::command
