#include "site/bar_chart.h"

#include <algorithm>
#include <cmath>

#include "values/convert.h"

namespace pradelis::site {
namespace {

constexpr double width = 760;
constexpr double left = 64;  // of the bars; labels of the amounts stand there
constexpr double top = 12;
constexpr double bottom = 212;  // of the bars; labels of the groups stand below
constexpr int steps = 4;

/// Coordinates are written with a point, whatever amounts are.
std::string coordinate(double value) {
  const auto tenths = static_cast<long>(std::lround(value * 10));
  return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

/// A round amount of at least `largest` that `steps` divides into round amounts.
double scale_for(double largest) {
  if (largest <= 0) return 100;
  const double unit = std::pow(10, std::floor(std::log10(largest / steps)));
  for (const double factor : {1.0, 2.0, 2.5, 5.0}) {
    if (unit * factor * steps >= largest) return unit * factor * steps;
  }
  return unit * 10 * steps;
}

/// "R$ 1,5 mi": short enough for the edge of the chart.
std::string short_amount(double amount) {
  struct Unit {
    double size;
    const char* name;
  };
  for (const Unit& unit : {Unit{1e9, " bi"}, Unit{1e6, " mi"}, Unit{1e3, " mil"}}) {
    if (amount < unit.size) continue;
    const double shown = amount / unit.size;
    return format_number(shown, shown == std::floor(shown) ? 0 : 1) + unit.name;
  }
  return format_number(amount, amount == std::floor(amount) ? 0 : 2);
}

View bar(double x, double bar_width, double amount, double scale) {
  const double height = amount / scale * (bottom - top);
  return View()
      .set("x", coordinate(x))
      .set("y", coordinate(bottom - height))
      .set("w", coordinate(bar_width))
      .set("h", coordinate(height));
}

}  // namespace

View bar_chart_view(const std::vector<BarGroup>& groups) {
  double largest = 0;
  for (const BarGroup& group : groups) largest = std::max({largest, group.first, group.second});
  const double scale = scale_for(largest);

  std::vector<View> lines;
  for (int i = 0; i <= steps; ++i) {
    const double y = bottom - (bottom - top) * i / steps;
    View line;
    line.set("y", coordinate(y))
        .set("text_y", coordinate(y + 4))
        .set("text", short_amount(scale * i / steps));
    lines.push_back(std::move(line));
  }

  std::vector<View> firsts;
  std::vector<View> seconds;
  std::vector<View> labels;
  const double slot = (width - left) / static_cast<double>(std::max<std::size_t>(groups.size(), 1));
  const double bar_width = slot * 0.36;
  double x = left;
  for (const BarGroup& group : groups) {
    if (group.first > 0) firsts.push_back(bar(x + slot * 0.12, bar_width, group.first, scale));
    if (group.second > 0) seconds.push_back(bar(x + slot * 0.52, bar_width, group.second, scale));
    labels.push_back(View().set("x", coordinate(x + slot / 2)).set("text", group.label));
    x += slot;
  }
  View view;
  view.list("lines", std::move(lines)).list("firsts", std::move(firsts)).list("seconds", std::move(seconds));
  return view.list("labels", std::move(labels));
}

}  // namespace pradelis::site
