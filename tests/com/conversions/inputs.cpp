#include "tests/com/conversions/inputs.h"

#include <bit>
#include <cmath>
#include <initializer_list>
#include <string>

#include "tests/com/conversions/made_texts.h"

namespace pradelis::test {
namespace {

constexpr unsigned seed = 20090305;
constexpr int number_texts = 8000;
constexpr int date_texts = 6000;
constexpr int doubles = 4000;
constexpr int dates = 1000;
constexpr int integers = 996;

constexpr std::initializer_list<Target> number_targets = {Target::Boolean, Target::UInt8, Target::Int16,
                                                          Target::Int32,   Target::Int64, Target::Double};
constexpr std::initializer_list<Target> all_targets = {Target::Boolean, Target::UInt8, Target::Int16,
                                                       Target::Int32,   Target::Int64, Target::Double,
                                                       Target::Date,    Target::Text};

class Maker {
 public:
  std::vector<Input> make() {
    for (int i = 0; i < number_texts; ++i) add(texts_.number(), number_targets);
    for (int i = 0; i < date_texts; ++i) add(texts_.date(), {Target::Date});
    for (int i = 0; i < doubles; ++i) add_number(made_double());
    for (int i = 0; i < dates; ++i) add(Date{made_serial()}, all_targets);
    for (int i = 0; i < integers; ++i) add(made_integer(), all_targets);
    for (const Variant& value : {Variant(), Variant::null(), Variant(true), Variant(false)})
      add(value, all_targets);
    return std::move(inputs_);
  }

 private:
  void add(const Variant& value, std::initializer_list<Target> targets) {
    for (const Target target : targets) inputs_.push_back({value, target});
  }

  void add_number(double value) {
    add(value, all_targets);
    inputs_.push_back({value, Target::Formatted, texts_.pick(7), texts_.pick(2) == 0});
  }

  /// Amounts, halves, neighbours of the integer types' limits, and any bit pattern that is a number.
  double made_double() {
    const double sign = texts_.pick(2) == 0 ? 1 : -1;
    switch (texts_.pick(6)) {
      case 0:
        return sign * texts_.pick(100'000'000) / 100.0;
      case 1:
        return sign * (texts_.pick(70'000) + 0.5);
      case 2:
        return sign * std::ldexp(1.0, texts_.pick(64)) + (texts_.pick(5) - 2) * 0.25;
      case 3:
        return sign * texts_.pick(1'000'000) * std::pow(10.0, texts_.pick(40) - 25);
      case 4:
        return sign * made_serial();
      default: {
        const double any = std::bit_cast<double>(texts_.bits());
        return std::isfinite(any) ? any : 0;
      }
    }
  }

  /// Days of all years, some beyond them, with and without a time of day.
  double made_serial() {
    constexpr int before_first_day = -657'440;
    constexpr int all_days = 3'615'910;
    constexpr double seconds_per_day = 86'400;
    const double day =
        texts_.pick(3) == 0 ? 39'000 + texts_.pick(5000) : before_first_day + texts_.pick(all_days);
    switch (texts_.pick(4)) {
      case 0:
        return day;
      case 1:
        return day + std::copysign(texts_.pick(86'400) / seconds_per_day, day);
      case 2:
        return texts_.pick(86'400) / seconds_per_day;
      default:
        return day + std::copysign(texts_.pick(1'000'000) / 1e6, day);
    }
  }

  Variant made_integer() {
    const auto bits = static_cast<std::int64_t>(texts_.bits() >> texts_.pick(64));
    switch (texts_.pick(4)) {
      case 0:
        return static_cast<std::uint8_t>(bits);
      case 1:
        return static_cast<std::int16_t>(bits);
      case 2:
        return static_cast<std::int32_t>(bits);
      default:
        return bits;
    }
  }

  MadeTexts texts_{seed};
  std::vector<Input> inputs_;
};

}  // namespace

std::vector<Input> made_inputs() { return Maker().make(); }

}  // namespace pradelis::test
