// Prints what the component costs, as ratios against the same statements written by hand on the
// database's own interface with prepared statements and bound values, measured in the same run.
// Arguments name the subjects to measure; without any, all are.

#include "bench/cases.h"
#include "bench/subjects.h"

int main(int count, char** arguments) {
  using namespace pradelis::bench;
  return measure_subjects<Fixture>(count, arguments, "against SQLite's C interface, by hand",
                                   {{"deals", measure_deals},
                                    {"visibility", measure_visibility},
                                    {"reading", measure_reading},
                                    {"appending", measure_appending},
                                    {"tree", measure_category_tree}});
}
