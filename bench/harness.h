#pragma once

#include <functional>
#include <string>

/// Measuring the component against the same work done by hand, in the same run.
namespace pradelis::bench {

struct Case {
  std::string name;
  double target = 0;  ///< the ratio that we promise not to exceed
  int runs = 0;       ///< pairs of alternating runs
  std::function<void()> component;
  std::function<void()> by_hand;
};

/// Runs both sides alternately and gives the median of the ratios of neighbouring runs, so that a
/// disturbance of the machine hits both sides or one pair only. The first pair warms up and does not
/// count.
double median_ratio(const Case& measured);

/// Measures a case and prints a line: name, ratio, target, time of each side.
void report(const Case& measured);

}  // namespace pradelis::bench
