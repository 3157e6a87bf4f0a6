#include "values/clock.h"

#include <chrono>
#include <cmath>
#include <ctime>
#include <utility>

namespace pradelis {
namespace {

std::function<Date()>& replacement() {
  static std::function<Date()> clock;
  return clock;
}

std::tm local_time(std::time_t time) {
  std::tm local = {};
#ifdef _WIN32
  localtime_s(&local, &time);
#else
  localtime_r(&time, &local);
#endif
  return local;
}

Date system_now() {
  const std::tm local = local_time(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()));
  DateParts parts;
  parts.year = local.tm_year + 1900;
  parts.month = local.tm_mon + 1;
  parts.day = local.tm_mday;
  parts.hour = local.tm_hour;
  parts.minute = local.tm_min;
  parts.second = local.tm_sec < 60 ? local.tm_sec : 59;  // a leap second is no time of day here
  return make_date(parts);
}

}  // namespace

Date now() { return replacement() ? replacement()() : system_now(); }

Date today() { return {static_cast<double>(day_number(now()))}; }

void replace_clock(std::function<Date()> clock) { replacement() = std::move(clock); }

}  // namespace pradelis
