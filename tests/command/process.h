#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace pradelis::command {

/// A folder of its own for one test, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

/// The `pradelis` command as a child process, with its standard streams.
class Process {
 public:
  explicit Process(std::vector<std::string> arguments);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  /// Ends the process when it was not waited for.
  ~Process();

  /// Writes text to the standard input.
  void write(const std::string& text);
  /// The next line of the standard output, without its end; fails the test when there is none.
  std::string read_line();
  /// Writes a line and gives the line that answers it.
  std::string ask(const std::string& line);

  struct Outcome {
    int status = 0;  ///< exit status; -1 when a signal ended the process
    std::string output;
    std::string complaint;  ///< what went to standard error
  };
  /// Ends the standard input, and collects what is left to read until the process ends.
  Outcome finish();
  /// Asks the process to end, as whoever administers the host does (SIGTERM), and collects what is left.
  Outcome stop();

 private:
  pid_t process_ = 0;
  int input_ = -1;
  int output_ = -1;
  int complaint_ = -1;
  std::string unread_;
};

/// Runs the command to its end with this standard input.
Process::Outcome run(std::vector<std::string> arguments, const std::string& input = {});

/// Connection string of a database file that `pradelis init` has made. It is made once, and copied.
std::string new_database(const TemporaryFolder& folder);

}  // namespace pradelis::command
