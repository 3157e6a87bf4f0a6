#include <cstdio>
#include <map>
#include <string>

#include "tests/com/conversions/answers.h"
#include "tests/com/conversions/exceptions.h"

// conversions: compares this system's conversions with those of the platform it runs on. Prints how many
// differences fell under each exception, and those that fell under none; ends with 1 when there are such.

int main() {
  using namespace pradelis::test;
  if (!is_brazilian()) {
    std::fputs("conversions: the user's settings are not Brazilian\n", stderr);
    return 2;
  }
  constexpr int most_reported = 200;
  std::map<std::string, int> excepted;
  int conversions = 0;
  int unexplained = 0;
  for (const Input& input : made_inputs()) {
    ++conversions;
    const std::string own = own_answer(input);
    const std::string platform = platform_answer(input);
    if (own == platform) continue;
    if (const Exception* exception = find_exception({input, own, platform})) {
      ++excepted[exception->name];
    } else if (++unexplained <= most_reported) {
      std::printf("%s: %s, platform %s\n", text_of(input).c_str(), own.c_str(), platform.c_str());
    }
  }
  std::printf("%d conversions compared\n", conversions);
  for (const Exception& exception : exceptions()) {
    std::printf("%7d  %s: %s\n", excepted[exception.name], exception.name, exception.reason);
  }
  std::printf("%7d  without an explanation\n", unexplained);
  return unexplained == 0 ? 0 : 1;
}
