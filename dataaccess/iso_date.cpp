#include "dataaccess/iso_date.h"

#include "values/error.h"

namespace pradelis::dataaccess {
namespace {

char* write_digits(char* out, std::int32_t number, int digits) noexcept {
  for (int place = digits - 1; place >= 0; --place, number /= 10) {
    out[place] = static_cast<char>('0' + number % 10);
  }
  return out + digits;
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  bool digits(std::size_t count, std::int32_t& number) noexcept {
    if (text_.size() < count) return false;
    number = 0;
    for (const char digit : text_.substr(0, count)) {
      if (digit < '0' || digit > '9') return false;
      number = number * 10 + (digit - '0');
    }
    text_.remove_prefix(count);
    return true;
  }
  bool sign(char sign) noexcept {
    if (text_.empty() || text_.front() != sign) return false;
    text_.remove_prefix(1);
    return true;
  }
  // Digits after the point; those beyond the milliseconds are passed over.
  bool fraction(std::int32_t& milliseconds) noexcept {
    std::size_t count = 0;
    milliseconds = 0;
    for (; count < text_.size() && text_[count] >= '0' && text_[count] <= '9'; ++count) {
      if (count < 3) milliseconds = milliseconds * 10 + (text_[count] - '0');
    }
    for (std::size_t place = count; place < 3; ++place) milliseconds *= 10;
    text_.remove_prefix(count);
    return count > 0;
  }
  bool at_end() const noexcept { return text_.empty(); }

 private:
  std::string_view text_;
};

bool read_time(Reader& reader, DateParts& parts) noexcept {
  if (!reader.digits(2, parts.hour) || !reader.sign(':') || !reader.digits(2, parts.minute)) return false;
  if (reader.sign(':') && !reader.digits(2, parts.second)) return false;
  return !reader.sign('.') || reader.fraction(parts.millisecond);
}

}  // namespace

std::string_view write_iso_date(Date date, bool day_only, char* buffer) {
  const DateParts parts = parts_of(date);
  char* out = write_digits(buffer, parts.year, 4);
  *out++ = '-';
  out = write_digits(out, parts.month, 2);
  *out++ = '-';
  out = write_digits(out, parts.day, 2);
  if (!day_only) {
    *out++ = ' ';
    out = write_digits(out, parts.hour, 2);
    *out++ = ':';
    out = write_digits(out, parts.minute, 2);
    *out++ = ':';
    out = write_digits(out, parts.second, 2);
    if (parts.millisecond != 0) {
      *out++ = '.';
      out = write_digits(out, parts.millisecond, 3);
    }
  }
  return {buffer, static_cast<std::size_t>(out - buffer)};
}

std::optional<Date> read_iso_date(std::string_view text) {
  Reader reader(text);
  DateParts parts;
  if (!reader.digits(4, parts.year) || !reader.sign('-') || !reader.digits(2, parts.month) ||
      !reader.sign('-') || !reader.digits(2, parts.day)) {
    return {};
  }
  if ((reader.sign(' ') || reader.sign('T')) && !read_time(reader, parts)) return {};
  if (!reader.at_end()) return {};
  try {
    return make_date(parts);
  } catch (const Error&) {  // "2026-02-30"
    return {};
  }
}

}  // namespace pradelis::dataaccess
