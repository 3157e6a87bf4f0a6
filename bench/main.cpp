// Prints what the component costs, as ratios against the same statements written by hand on the
// database's own interface with prepared statements and bound values, measured in the same run.
// Arguments name the subjects to measure; without any, all are.

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

#include "bench/cases.h"

namespace {

struct Subject {
  std::string_view name;
  void (*measure)(pradelis::bench::Fixture&);
};

constexpr std::array<Subject, 5> subjects{{
    {"deals", &pradelis::bench::measure_deals},
    {"visibility", &pradelis::bench::measure_visibility},
    {"reading", &pradelis::bench::measure_reading},
    {"appending", &pradelis::bench::measure_appending},
    {"tree", &pradelis::bench::measure_category_tree},
}};

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string_view> wanted(arguments + 1, arguments + count);
  try {
    pradelis::bench::Fixture fixture;
    std::printf("%-52s ratio\n", "against SQLite's C interface, by hand");
    for (const Subject& subject : subjects) {
      const bool named = std::find(wanted.begin(), wanted.end(), subject.name) != wanted.end();
      if (wanted.empty() || named) subject.measure(fixture);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
