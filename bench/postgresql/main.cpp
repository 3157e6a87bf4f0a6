// Prints what the component costs on PostgreSQL through its ODBC driver, as ratios against the same
// statements sent through the server's own library, on the same server and in the same run. To be run by
// scripts/with-postgres. Arguments name the subjects to measure; without any, all are.

#include "bench/postgresql/fixture.h"
#include "bench/subjects.h"

int main(int count, char** arguments) {
  using namespace pradelis::bench::postgresql;
  return pradelis::bench::measure_subjects<Fixture>(count, arguments,
                                                    "against PostgreSQL's own library, by hand",
                                                    {{"deals", measure_deals},
                                                     {"visibility", measure_visibility},
                                                     {"tree", measure_category_tree},
                                                     {"reading", measure_reading}});
}
