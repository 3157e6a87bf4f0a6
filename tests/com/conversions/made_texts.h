#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace pradelis::test {

/// Texts that mean numbers or dates under Brazilian settings, or nearly do. The same ones for the same seed.
class MadeTexts {
 public:
  explicit MadeTexts(unsigned seed) : random_(seed) {}

  std::string number();
  std::string date();

  /// A number from 0 to `count` - 1.
  int pick(int count) { return static_cast<int>(random_() % static_cast<std::uint64_t>(count)); }
  /// 64 random bits.
  std::uint64_t bits() { return random_(); }

 private:
  std::string_view pick_from(std::initializer_list<std::string_view> texts) {
    return texts.begin()[pick(static_cast<int>(texts.size()))];
  }
  bool chance(int percent) { return pick(100) < percent; }

  std::string digits(int most);
  std::string decimal();
  std::string radix();
  std::string day();
  std::string numeric_day();
  std::string worded_day();
  std::string time();
  /// The text with a letter changed, left out or put in.
  std::string spoilt(std::string text, std::string_view letters);

  std::mt19937_64 random_;  // its numbers are the same in every library of C++
};

}  // namespace pradelis::test
