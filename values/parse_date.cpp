#include <algorithm>
#include <array>
#include <cstddef>

#include "values/calendar.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/date_words.h"
#include "values/text.h"
#include "values/white_space.h"

namespace pradelis {
namespace {

enum class HalfOfDay { none, morning, afternoon };

/// A number or month name of the text, with what was said about it.
struct Field {
  std::int32_t value = 0;
  bool is_month_name = false;
  bool before_time_separator = false;
  HalfOfDay half = HalfOfDay::none;
};

constexpr bool is_digit(char letter) { return letter >= '0' && letter <= '9'; }
constexpr bool is_letter(char letter) { return letter >= 'a' && letter <= 'z'; }

/// Takes a text (in lower case) apart into at most six fields.
class FieldReader {
 public:
  explicit FieldReader(std::string_view text) : rest_(text) {}

  /// False when something stands in the text that no date has.
  bool read() {
    while (!rest_.empty()) {
      const char letter = rest_.front();
      const bool understood = is_digit(letter)    ? read_digits()
                              : is_letter(letter) ? read_word()
                                                  : read_separator(letter);
      if (!understood) return false;
    }
    return count_ > 0;
  }

  std::size_t count() const { return count_; }
  const Field& operator[](std::size_t index) const { return fields_[index]; }

 private:
  static constexpr std::size_t max_fields = 6;
  static constexpr std::int32_t too_large = 100'000;  // for any part of a date

  bool add(Field field) {
    if (count_ == max_fields) return false;
    fields_[count_++] = field;
    return true;
  }

  bool read_digits() {
    Field field;
    for (; !rest_.empty() && is_digit(rest_.front()); rest_.remove_prefix(1)) {
      field.value = std::min(field.value * 10 + (rest_.front() - '0'), too_large);
    }
    return add(field);
  }

  bool read_word() {
    const DateWord word = find_date_word(rest_);
    rest_.remove_prefix(word.length);
    switch (word.kind) {
      case DateWord::Kind::month: {
        Field field;
        field.value = word.month;
        field.is_month_name = true;
        return add(field);
      }
      case DateWord::Kind::weekday:
        return true;
      case DateWord::Kind::morning:
        return mark(HalfOfDay::morning);
      case DateWord::Kind::afternoon:
        return mark(HalfOfDay::afternoon);
      case DateWord::Kind::none:
        break;
    }
    return false;
  }

  bool mark(HalfOfDay half) {
    if (count_ == 0 || is_marked_) return false;
    fields_[count_ - 1].half = half;
    return is_marked_ = true;
  }

  bool read_separator(char letter) {
    if (skip_spaces(rest_)) return true;
    rest_.remove_prefix(1);
    if (rest_.empty()) return false;
    switch (letter) {
      case ',':
        return true;
      case ':':
      case '.':
        if (count_ == 0) return false;
        return fields_[count_ - 1].before_time_separator = true;
      case '-':
      case '/':
        return count_ > 0 && ++date_separators_ <= 2;
      default:
        return false;
    }
  }

  std::string_view rest_;
  std::array<Field, max_fields> fields_;
  std::size_t count_ = 0;
  int date_separators_ = 0;
  bool is_marked_ = false;
};

/// Which fields are the time of day and which the day: one run each, in either order.
struct Layout {
  std::size_t time_start = 0;
  std::size_t time_count = 0;
  std::size_t day_start = 0;
  std::size_t day_count = 0;
};

bool is_within(std::size_t index, std::size_t start, std::size_t count) {
  return index >= start && index < start + count;
}

/// The run of fields that time separators join; where there is none, the first or last field if AM or PM
/// stands beside it. Empty when the text has no time of day.
Layout find_time(const FieldReader& fields) {
  const std::size_t count = fields.count();
  Layout layout;
  for (std::size_t i = 0; i < count; ++i) {
    if (!fields[i].before_time_separator) continue;
    layout.time_start = i;
    std::size_t end = i;
    while (end + 1 < count && fields[end].before_time_separator) ++end;
    layout.time_count = end - i + 1;
    return layout;
  }
  for (const std::size_t i : {std::size_t{0}, count - 1}) {
    if (fields[i].half == HalfOfDay::none) continue;
    layout.time_start = i;
    layout.time_count = 1;
    return layout;
  }
  return layout;
}

std::optional<Layout> find_layout(const FieldReader& fields) {
  Layout layout = find_time(fields);
  layout.day_count = fields.count() - layout.time_count;
  layout.day_start = layout.time_start == 0 ? layout.time_count : 0;
  const bool time_follows_day = layout.time_start == layout.day_count;
  if (layout.time_start != 0 && !time_follows_day) return std::nullopt;
  if (layout.time_count > 3) return std::nullopt;
  if (layout.day_count > 3 || layout.day_count == 1) return std::nullopt;
  for (std::size_t i = 0; i < fields.count(); ++i) {
    const bool is_time = is_within(i, layout.time_start, layout.time_count);
    if (!is_time && (fields[i].before_time_separator || fields[i].half != HalfOfDay::none)) {
      return std::nullopt;
    }
  }
  const std::size_t last_of_time = layout.time_start + layout.time_count - 1;
  if (layout.time_count > 0 && fields[last_of_time].before_time_separator) return std::nullopt;
  return layout;
}

bool read_time(const FieldReader& fields, const Layout& layout, DateParts& parts) {
  const std::array<std::int32_t*, 3> targets = {&parts.hour, &parts.minute, &parts.second};
  HalfOfDay half = HalfOfDay::none;
  for (std::size_t i = 0; i < layout.time_count; ++i) {
    const Field& field = fields[layout.time_start + i];
    *targets[i] = field.value;
    if (field.half != HalfOfDay::none) half = field.half;
  }
  if (parts.hour > 23 || parts.minute > 59 || parts.second > 59) return false;
  if (half == HalfOfDay::afternoon && parts.hour < 12) parts.hour += 12;
  if (half == HalfOfDay::morning && parts.hour == 12) parts.hour = 0;
  return true;
}

/// Where day, month and year stand among three numbers.
struct Order {
  std::size_t day;
  std::size_t month;
  std::size_t year;
};

constexpr Order day_month_year = {0, 1, 2};
constexpr Order month_day_year = {1, 0, 2};
constexpr Order year_day_month = {1, 2, 0};
constexpr Order year_month_day = {2, 1, 0};
constexpr Order month_year_day = {2, 0, 1};

using Numbers = std::array<std::int32_t, 3>;

std::int32_t full_year(std::int32_t year) {
  if (year < 30) return 2000 + year;
  return year < 100 ? 1900 + year : year;
}

bool set_day(const Numbers& numbers, const Order& order, DateParts& parts) {
  const std::int32_t year = full_year(numbers[order.year]);
  const std::int32_t month = numbers[order.month];
  const std::int32_t day = numbers[order.day];
  if (year > last_year || month < 1 || month > 12 || day < 1 || day > days_in_month(month, year))
    return false;
  parts.year = year;
  parts.month = month;
  parts.day = day;
  return true;
}

/// The first of `orders` that makes a day and puts the month name, if there is one, in the place of the
/// month.
bool set_day_in_order(const Numbers& numbers, std::optional<std::size_t> month_name,
                      std::initializer_list<Order> orders, DateParts& parts) {
  return std::any_of(orders.begin(), orders.end(), [&](const Order& order) {
    return (!month_name || order.month == *month_name) && set_day(numbers, order, parts);
  });
}

bool read_day(const FieldReader& fields, const Layout& layout, DateParts& parts) {
  if (layout.day_count == 0) return true;
  Numbers numbers = {};
  std::optional<std::size_t> month_name;
  for (std::size_t i = 0; i < layout.day_count; ++i) {
    const Field& field = fields[layout.day_start + i];
    numbers[i] = field.value;
    if (field.is_month_name && !month_name) month_name = i;
  }
  if (layout.day_count == 3) {
    return set_day_in_order(numbers, month_name,
                            {day_month_year, month_day_year, year_month_day, year_day_month}, parts);
  }
  // Two numbers are a day of this year, or else the first day of a month.
  numbers[2] = parts_of(today()).year;
  if (set_day_in_order(numbers, month_name, {day_month_year, month_day_year}, parts)) return true;
  numbers[2] = 1;
  return set_day_in_order(numbers, std::nullopt, {year_month_day, month_year_day}, parts);
}

}  // namespace

std::optional<Date> parse_date(std::string_view text) {
  const std::string lower = to_lower(text);
  FieldReader fields(lower);
  if (!fields.read()) return std::nullopt;
  const std::optional<Layout> layout = find_layout(fields);
  if (!layout) return std::nullopt;
  DateParts parts;
  if (!read_time(fields, *layout, parts) || !read_day(fields, *layout, parts)) return std::nullopt;
  return make_date(parts);
}

}  // namespace pradelis
