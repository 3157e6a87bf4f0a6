#include "process.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

extern char** environ;

namespace pradelis::command {
namespace {

struct Pipe {
  int reads = -1;
  int writes = -1;

  Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    reads = ends[0];
    writes = ends[1];
  }
};

std::string read_all(int descriptor) {
  std::string text;
  std::array<char, 65536> buffer;
  ssize_t got = 0;
  while ((got = read(descriptor, buffer.data(), buffer.size())) > 0) {
    text.append(buffer.data(), static_cast<std::size_t>(got));
  }
  return text;
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "pradelis-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

Process::Process(std::vector<std::string> arguments) {
  std::signal(SIGPIPE, SIG_IGN);  // a child that ended early shows in its answers
  const Pipe input, output, complaint;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input.reads, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output.writes, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, complaint.writes, STDERR_FILENO);
  std::string command = PRADELIS_COMMAND;
  std::vector<char*> pointers = {command.data()};
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  const int failure = posix_spawn(&process_, PRADELIS_COMMAND, &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  for (const int unneeded : {input.reads, output.writes, complaint.writes}) close(unneeded);
  if (failure != 0) throw std::runtime_error("cannot start " PRADELIS_COMMAND);
  input_ = input.writes;
  output_ = output.reads;
  complaint_ = complaint.reads;
}

Process::~Process() {
  for (const int descriptor : {input_, output_, complaint_}) {
    if (descriptor >= 0) close(descriptor);
  }
  if (process_ == 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
}

void Process::write(const std::string& text) {
  std::string_view rest = text;
  while (!rest.empty()) {
    const ssize_t done = ::write(input_, rest.data(), rest.size());
    if (done < 0) throw std::runtime_error("the process does not read");
    rest.remove_prefix(static_cast<std::size_t>(done));
  }
}

std::string Process::read_line() {
  std::array<char, 65536> buffer;
  std::size_t end = 0;
  while ((end = unread_.find('\n')) == std::string::npos) {
    const ssize_t got = read(output_, buffer.data(), buffer.size());
    if (got <= 0) throw std::runtime_error("the process gave no answer: " + read_all(complaint_));
    unread_.append(buffer.data(), static_cast<std::size_t>(got));
  }
  std::string line = unread_.substr(0, end);
  unread_.erase(0, end + 1);
  return line;
}

std::string Process::ask(const std::string& line) {
  write(line + "\n");
  return read_line();
}

Process::Outcome Process::finish() {
  close(input_);
  input_ = -1;
  Outcome outcome;
  outcome.output = std::exchange(unread_, {}) + read_all(output_);
  outcome.complaint = read_all(complaint_);
  int status = 0;
  waitpid(process_, &status, 0);
  process_ = 0;
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return outcome;
}

Process::Outcome Process::stop() {
  kill(process_, SIGTERM);
  return finish();
}

Process::Outcome run(std::vector<std::string> arguments, const std::string& input) {
  Process process(std::move(arguments));
  process.write(input);
  return process.finish();
}

std::string new_database(const TemporaryFolder& folder) {
  static const TemporaryFolder shared;
  static const std::filesystem::path model = [] {
    const std::filesystem::path file = shared / "model.db";
    const Process::Outcome outcome = run(
        {"init", "--database", "sqlite:" + file.string(), "--maintenance-password-file", "-"}, "segredo\n");
    if (outcome.status != 0) throw std::runtime_error("init failed: " + outcome.complaint);
    return file;
  }();
  const std::filesystem::path file = folder / "test.db";
  std::filesystem::copy_file(model, file);
  return "sqlite:" + file.string();
}

}  // namespace pradelis::command
