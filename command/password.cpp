#include "command/password.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "values/text.h"

namespace pradelis::command {
namespace {

volatile std::sig_atomic_t pending_signal = 0;

void remember_signal(int number) { pending_signal = number; }

/// The process's terminal with its echo switched off. A signal that would end or stop the process waits
/// until the echo is on again.
class SilentTerminal {
 public:
  SilentTerminal() : descriptor_(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (descriptor_ < 0 || tcgetattr(descriptor_, &before_) != 0) {
      throw std::runtime_error("não há terminal para pedir a senha; use --maintenance-password-file");
    }
    struct sigaction remember = {};
    remember.sa_handler = remember_signal;  // without SA_RESTART: reading ends
    for (std::size_t i = 0; i < std::size(signals); ++i) sigaction(signals[i], &remember, &handlers_[i]);
    termios silent = before_;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    silent.c_lflag |= ECHONL;
    tcsetattr(descriptor_, TCSAFLUSH, &silent);
  }
  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;
  ~SilentTerminal() {
    tcsetattr(descriptor_, TCSAFLUSH, &before_);
    for (std::size_t i = 0; i < std::size(signals); ++i) sigaction(signals[i], &handlers_[i], nullptr);
    close(descriptor_);
    if (pending_signal != 0) std::raise(pending_signal);
  }

  std::string ask(const std::string& question) {
    if (write(descriptor_, question.data(), question.size()) < 0)
      throw std::runtime_error("o terminal não responde");
    std::string line;
    char c = 0;
    ssize_t got = 0;
    while ((got = read(descriptor_, &c, 1)) == 1 && c != '\n') line += c;
    if (got != 1) throw std::runtime_error("a senha não foi informada");
    return line;
  }

 private:
  static constexpr int signals[] = {SIGINT, SIGTERM, SIGQUIT, SIGHUP, SIGTSTP};

  int descriptor_;
  termios before_ = {};
  struct sigaction handlers_[std::size(signals)] = {};
};

std::string checked(std::string password) {
  if (!password.empty() && password.back() == '\r') password.pop_back();
  if (password.empty()) throw std::runtime_error("a senha não pode ser vazia");
  if (!is_valid_utf8(password)) throw std::runtime_error("a senha não está em UTF-8");
  return password;
}

}  // namespace

std::string ask_for_new_password(const std::string& whose) {
  SilentTerminal terminal;
  std::string password = checked(terminal.ask("Senha " + whose + ": "));
  if (terminal.ask("Mais uma vez: ") != password) throw std::runtime_error("as senhas não são iguais");
  return password;
}

std::string read_password(const std::string& file) {
  std::ifstream opened;
  if (file != "-") opened.open(file);
  std::istream& input = file == "-" ? std::cin : opened;
  if (!input) throw std::runtime_error("não foi possível ler " + file);
  std::string line;
  std::getline(input, line);
  return checked(std::move(line));
}

}  // namespace pradelis::command
