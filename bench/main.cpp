// Prints what the component costs, as ratios against the same statements written by hand on the
// database's own interface with prepared statements and bound values, measured in the same run.

#include <cstdio>
#include <exception>

#include "bench/cases.h"

int main() {
  try {
    pradelis::bench::Fixture fixture;
    std::printf("%-52s ratio\n", "against SQLite's C interface, by hand");
    measure_deals(fixture);
    measure_visibility(fixture);
    measure_reading(fixture);
    measure_appending(fixture);
    measure_category_tree(fixture);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
