#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <fstream>

#include "process.h"

namespace pradelis::command {
namespace {

class Init : public testing::Test {
 protected:
  TemporaryFolder folder_;
  std::string file_ = folder_ / "new.db";
  std::string database_ = "sqlite:" + file_;
};

TEST_F(Init, CreatesOnceAndThenHasNothingToDo) {
  const Process::Outcome first =
      run({"init", "--database", database_, "--maintenance-password-file", "-"}, "segredo\r\n");
  EXPECT_EQ(first.status, 0) << first.complaint;
  EXPECT_EQ(first.output.substr(0, 23), "Banco de dados criado n");

  const Process::Outcome second = run({"init", "--database", database_});  // needs no password now
  EXPECT_EQ(second.status, 0) << second.complaint;
  EXPECT_EQ(second.output.substr(0, 13), "Nada a fazer:");

  const Process::Outcome login = run({"call", "--database", database_},
                                     "{\"new\":\"Pradelis.CRM\",\"as\":\"crm\"}\n"
                                     "{\"call\":\"crm.Logar\",\"args\":[\"tarvonel\",\"segredo\",null]}\n");
  EXPECT_NE(login.output.find("Não existe esse vendedor"), std::string::npos)
      << "the password holds, and the user is no salesperson: " << login.output;
}

TEST_F(Init, TakesThePasswordFromTheFirstLineOfAFile) {
  const std::string password = folder_ / "senha.txt";
  std::ofstream(password) << "segredo\noutra linha\n";
  const Process::Outcome outcome =
      run({"init", "--database", database_, "--maintenance-password-file", password});
  EXPECT_EQ(outcome.status, 0) << outcome.complaint;
}

TEST_F(Init, RefusesAndWritesNothing) {
  const std::string empty = folder_ / "vazia.txt";
  std::ofstream(empty) << "\nsegredo\n";
  struct Case {
    std::vector<std::string> arguments;
    int status;
    const char* complaint;
  };
  const Case cases[] = {
      {{"--maintenance-password-file", empty}, 1, "a senha não pode ser vazia"},
      {{"--maintenance-password-file", folder_ / "nenhuma"}, 1, "não foi possível ler"},
      {{"--maintenance-password-file"}, 2, "--maintenance-password-file"},
      {{"--maintenance-password"}, 2, "não se espera: --maintenance-password"},
      {{"demais"}, 2, "não se espera: demais"},
  };
  for (const Case& c : cases) {
    std::vector<std::string> arguments = {"init", "--database", database_};
    arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
    const Process::Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, c.status);
    EXPECT_NE(outcome.complaint.find(c.complaint), std::string::npos) << outcome.complaint;
    EXPECT_EQ(outcome.output, "");
  }
  const Process::Outcome unreachable = run({"init", "--database", "sqlite:/nenhuma/pasta/x.db"}, "");
  EXPECT_EQ(unreachable.status, 1);
  EXPECT_NE(unreachable.complaint, "");
}

/// Runs `init` on a terminal of its own, answers each question with the next of `answers`, and gives
/// what stood on the terminal and the exit status.
std::pair<std::string, int> init_on_terminal(const std::string& database, std::vector<std::string> answers) {
  int terminal = -1;
  const pid_t process = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (process == 0) {
    execl(PRADELIS_COMMAND, PRADELIS_COMMAND, "init", "--database", database.c_str(), nullptr);
    _exit(127);
  }
  std::string shown;
  std::array<char, 1024> buffer;
  ssize_t got = 0;
  auto answer = answers.begin();
  while ((got = read(terminal, buffer.data(), buffer.size())) > 0) {
    shown.append(buffer.data(), static_cast<std::size_t>(got));
    if (answer == answers.end() || !shown.ends_with(": ")) continue;
    const std::string line = *answer++ + "\n";
    if (write(terminal, line.data(), line.size()) < 0) break;
  }
  int status = 0;
  waitpid(process, &status, 0);
  close(terminal);
  return {shown, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

TEST_F(Init, AsksTheTerminalTwiceWithoutShowingThePassword) {
  const auto [shown, status] = init_on_terminal(database_, {"açúcar99", "açúcar99"});
  EXPECT_EQ(status, 0) << shown;
  EXPECT_NE(shown.find("Senha do usuário de manutenção: "), std::string::npos) << shown;
  EXPECT_EQ(shown.find("açúcar99"), std::string::npos) << shown;
}

TEST_F(Init, RefusesWhatIsTypedDifferentlyOrNotAtAll) {
  EXPECT_EQ(init_on_terminal(database_, {"uma", "outra"}).second, 1);
  EXPECT_EQ(init_on_terminal(database_, {""}).second, 1);
  EXPECT_EQ(init_on_terminal(database_, {"\x03"}).second, -1);  // Ctrl-C ends it as ever
}

TEST(CommandLine, IsExplainedAndCheckedInPortuguese) {
  const Process::Outcome help = run({"--help"});
  EXPECT_EQ(help.status, 0);
  for (const char* word : {"Uso:", "Comandos", "init", "call", "demo", "serve"}) {
    EXPECT_NE(help.output.find(word), std::string::npos) << word << " in " << help.output;
  }
  EXPECT_EQ(run({"--version"}).status, 0);
  struct Case {
    std::vector<std::string> arguments;
    const char* complaint;
  };
  const Case cases[] = {
      {{}, "falta o comando"},
      {{"call"}, "falta a opção --database"},
      {{"serve", "--database", "sqlite:x", "--port", "70000"}, "\"70000\" não é um número de 0 a 65535"},
      {{"serve", "--database", "sqlite:x", "--threads", "dois"}, "\"dois\" não é um número"},
      {{"apagar"}, "não se espera: apagar"},
  };
  for (const Case& c : cases) {
    const Process::Outcome outcome = run(c.arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.complaint.find(c.complaint), std::string::npos) << outcome.complaint;
  }
}

}  // namespace
}  // namespace pradelis::command
