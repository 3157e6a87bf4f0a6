#pragma once

#include <cstdint>

namespace pradelis::bench {

/// What is in the measured databases.
struct Contents {
  static constexpr std::int32_t first_company = 1'000'001;
  static constexpr std::int32_t companies = 3'000;
  static constexpr std::int32_t first_deal = 2'000'001;
  static constexpr std::int32_t deals = 33'400;  ///< three product classes each: 100,200 rows
  static constexpr std::int32_t first_group = 3'000'001;
  static constexpr std::int32_t groups = 1'000;  ///< ten below each
  static constexpr std::int32_t first_member = 4'000'001;
  static constexpr std::int32_t members = 10'000;
  static constexpr std::int32_t seller = first_member;
  static constexpr std::int32_t first_category = 5'000'001;
  static constexpr std::int32_t categories = 2'000;  ///< six below each: five levels
};

}  // namespace pradelis::bench
