#include "command/progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace pradelis::command {

Progress::Progress(std::size_t steps)
    : steps_(std::max<std::size_t>(steps, 1)), terminal_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  if (shown_percent_ > 0) std::fputs("\r\033[K", stderr);
}

void Progress::step() {
  done_ = std::min(done_ + 1, steps_);
  const std::size_t percent = done_ * 100 / steps_;
  if (!terminal_ || percent == shown_percent_ || Clock::now() - started_ < std::chrono::seconds(1)) return;
  shown_percent_ = percent;
  constexpr std::size_t width = 40;
  const std::size_t filled = percent * width / 100;
  const std::string bar = std::string(filled, '#') + std::string(width - filled, '.');
  std::fprintf(stderr, "\r[%s] %3zu %%", bar.c_str(), percent);
}

}  // namespace pradelis::command
