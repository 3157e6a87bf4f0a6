#pragma once

#include <string>
#include <vector>

#include "site/view.h"

namespace pradelis::site {

/// One group of a bar chart: two amounts of money side by side.
struct BarGroup {
  std::string label;
  double first = 0;   ///< drawn hatched
  double second = 0;  ///< drawn solid
};

/// For the template part "_chart": where to draw bars, lines and labels, in units of the drawing. No
/// amount is below zero.
View bar_chart_view(const std::vector<BarGroup>& groups);

}  // namespace pradelis::site
