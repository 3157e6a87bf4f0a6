#include "tests/support/sql_parser.h"

#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <regex>
#include <set>

#include "tests/support/database.h"
#include "values/text.h"

namespace pradelis::tests {
namespace {

struct Answer {
  int status = -1;
  std::string text;
};

Answer run(const std::string& command) {
  Answer answer;
  FILE* output = popen(command.c_str(), "r");
  if (output == nullptr) return answer;
  char buffer[4096];
  while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, output))
    answer.text.append(buffer, got);
  const int status = pclose(output);
  answer.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return answer;
}

/// Each statement on a line of its own, so that the parser's line numbers tell them apart.
void write_file(const std::string& path, const std::vector<std::string>& statements) {
  std::ofstream file(path);
  for (const std::string& statement : statements) file << replace_all(statement, "\n", " ") << ";\n";
}

}  // namespace

bool has_sql_parser() { return run("command -v sqlfluff").status == 0; }

std::string not_understood(const std::string& dialect, const std::vector<std::string>& statements) {
  const TemporaryFolder folder;
  const std::string path = folder.path() / "statements.sql";
  write_file(path, statements);
  const Answer answer = run(
      concat("sqlfluff parse --ignore-local-config --templater raw --dialect ", dialect, " ", path, " 2>&1"));
  if (answer.status == 0) return {};
  static const std::regex complaint(R"(\nL: *(\d+) \|)");
  std::set<std::size_t> lines;
  for (std::sregex_iterator found(answer.text.begin(), answer.text.end(), complaint), end; found != end;
       ++found) {
    lines.insert(std::stoul((*found)[1]));
  }
  if (lines.empty()) return answer.text;
  std::string text;
  for (const std::size_t line : lines) text += statements.at(line - 1) + "\n";
  return text;
}

}  // namespace pradelis::tests
