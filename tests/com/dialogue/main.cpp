#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>
#include <string>

#include "command/dialogue.h"
#include "tests/com/dialogue/windows_host.h"

// dialogue DATABASE: the dialogue of `pradelis call`, with the registered library.

int main(int count, char** arguments) {
  using namespace pradelis::test;
  if (count != 2) {
    std::fputs("dialogue DATABASE\n", stderr);
    return 2;
  }
  PageObjects page;
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) || FAILED(register_app_server(page)))
    return 2;
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
  WindowsHost host(page, arguments[1]);
  pradelis::command::Dialogue dialogue(host);
  std::string line;
  while (std::getline(std::cin, line)) std::cout << dialogue.answer(line) << '\n' << std::flush;
  std::fflush(nullptr);
  // The platform's own end would call objects of this program that are gone by then.
  ExitProcess(0);
}
