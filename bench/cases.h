#pragma once

#include "bench/fixture.h"

/// One subject each: they measure on the fixture and print their lines.
namespace pradelis::bench {

void measure_deals(Fixture& fixture);
void measure_visibility(Fixture& fixture);
void measure_reading(Fixture& fixture);
void measure_appending(Fixture& fixture);
void measure_category_tree(Fixture& fixture);

}  // namespace pradelis::bench
