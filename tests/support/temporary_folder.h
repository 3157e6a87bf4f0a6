#pragma once

#include <atomic>
#include <filesystem>
#include <string>

#ifdef _WIN32
#include <process.h>
#else
#include <unistd.h>
#endif

namespace pradelis::tests {

/// A folder of its own for one test, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    static std::atomic<int> next = 0;
#ifdef _WIN32
    const auto process = _getpid();
#else
    const auto process = getpid();
#endif
    path_ = std::filesystem::temp_directory_path() /
            ("pradelis-test-" + std::to_string(process) + "-" + std::to_string(next++));
    std::filesystem::create_directories(path_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string file(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

}  // namespace pradelis::tests
