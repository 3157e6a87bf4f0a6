#pragma once

#include <algorithm>
#include <cstdio>
#include <exception>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace pradelis::bench {

/// One thing to measure: it prints its lines.
template <class Fixture>
struct Subject {
  std::string_view name;
  void (*measure)(Fixture&);
};

/// Measures the subjects that the program's arguments name, all without any, under a title that says what
/// the component is compared with. Result: the program's exit status.
template <class Fixture>
int measure_subjects(int count, char** arguments, const char* title,
                     std::initializer_list<Subject<Fixture>> subjects) {
  const std::vector<std::string_view> wanted(arguments + 1, arguments + count);
  try {
    Fixture fixture;
    std::printf("%-52s ratio\n", title);
    for (const Subject<Fixture>& subject : subjects) {
      const bool named = std::find(wanted.begin(), wanted.end(), subject.name) != wanted.end();
      if (wanted.empty() || named) subject.measure(fixture);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
  return 0;
}

}  // namespace pradelis::bench
