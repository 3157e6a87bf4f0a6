#include "bench/harness.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace pradelis::bench {
namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

double microseconds_of(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return Microseconds(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

struct Measurement {
  double ratio, component, by_hand;
};

Measurement measure(const Case& measured) {
  std::vector<double> ratios, component, by_hand;
  measured.component();
  measured.by_hand();
  for (int run = 0; run < measured.runs; ++run) {
    // Whoever goes first in a pair takes turns: the second one finds warmer caches.
    const bool component_first = run % 2 == 0;
    double first = microseconds_of(component_first ? measured.component : measured.by_hand);
    double second = microseconds_of(component_first ? measured.by_hand : measured.component);
    if (!component_first) std::swap(first, second);
    component.push_back(first);
    by_hand.push_back(second);
    ratios.push_back(first / second);
  }
  return {median(ratios), median(component), median(by_hand)};
}

}  // namespace

double median_ratio(const Case& measured) { return measure(measured).ratio; }

void report(const Case& measured) {
  const Measurement result = measure(measured);
  std::printf("%-52s %5.2f  (at most %.2f)  %10.1f us against %10.1f us\n", measured.name.c_str(),
              result.ratio, measured.target, result.component, result.by_hand);
  std::fflush(stdout);
}

}  // namespace pradelis::bench
