// Prints what the component costs on PostgreSQL through its ODBC driver, as ratios against the same
// statements sent through the server's own library, on the same server and in the same run. To be run by
// scripts/with-postgres. Arguments name the subjects to measure; without any, all are.

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

#include "bench/postgresql/fixture.h"

namespace {

namespace measured = pradelis::bench::postgresql;

struct Subject {
  std::string_view name;
  void (*measure)(measured::Fixture&);
};

constexpr std::array<Subject, 4> subjects{{
    {"deals", &measured::measure_deals},
    {"visibility", &measured::measure_visibility},
    {"tree", &measured::measure_category_tree},
    {"reading", &measured::measure_reading},
}};

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string_view> wanted(arguments + 1, arguments + count);
  try {
    measured::Fixture fixture;
    std::printf("%-52s ratio\n", "against PostgreSQL's own library, by hand");
    for (const Subject& subject : subjects) {
      const bool named = std::find(wanted.begin(), wanted.end(), subject.name) != wanted.end();
      if (wanted.empty() || named) subject.measure(fixture);
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
