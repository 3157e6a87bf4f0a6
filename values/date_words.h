#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace pradelis {

/// A word that has a meaning in a date.
struct DateWord {
  enum class Kind { none, month, weekday, morning, afternoon };

  Kind kind = Kind::none;
  std::int32_t month = 0;  ///< 1 to 12 for a month
  std::size_t length = 0;  ///< bytes
};

/// The word that `text` (in lower case) starts with: full and short Portuguese names of months and weekdays,
/// "am", "pm", and their first letters alone. Letters may follow a name.
DateWord find_date_word(std::string_view text) noexcept;

}  // namespace pradelis
