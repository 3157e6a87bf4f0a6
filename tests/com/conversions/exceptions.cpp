#include "tests/com/conversions/exceptions.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <regex>

#include "tests/com/conversions/answers.h"
#include "tests/com/conversions/spellings.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::test {
namespace {

bool is_text(const Input& input) { return input.value.is(VariantType::Text); }
bool is_double(const Input& input) { return input.value.is(VariantType::Double); }
bool is_number_of_text(const Input& input) { return is_text(input) && input.target != Target::Date; }
bool is_date_of_text(const Input& input) { return is_text(input) && input.target == Target::Date; }
bool is_error(const std::string& answer) { return answer.starts_with("error"); }

/// Whether the platform gives our answer to another spelling of the text.
template <class Spelling>
bool agrees_when(const Difference& difference, Spelling&& respelt) {
  const std::string& original = difference.input.value.get<std::string>();
  const std::string text = respelt(original);
  if (text == original) return false;
  Input input = difference.input;
  input.value = text;
  const std::string platform = platform_answer(input);
  return platform == difference.own || find_exception({input, difference.own, platform});
}

bool d_exponent(const Difference& difference) {
  return is_number_of_text(difference.input) && agrees_when(difference, with_e_for_d);
}

bool accented_capital(const Difference& difference) {
  return is_date_of_text(difference.input) && agrees_when(difference, [](const std::string& text) {
           return replace_all(replace_all(text, "Ç", "ç"), "Á", "á");
         });
}

bool null_number(const Difference& difference) {
  return difference.input.value.is_null() && difference.own == "error 94" &&
         difference.platform == "error 13";
}

bool short_name(const Difference& difference) {
  return is_date_of_text(difference.input) && agrees_when(difference, with_full_names);
}

bool lone_half_of_day(const Difference& difference) {
  return is_date_of_text(difference.input) && agrees_when(difference, with_full_half_of_day);
}

bool signs_beside_half_of_day(const Difference& difference) {
  static const std::regex mark("(^|[^a-zç])[ap]m?[^ a-z]");
  return is_date_of_text(difference.input) &&
         std::regex_search(to_lower(difference.input.value.get<std::string>()), mark);
}

bool large_year(const Difference& difference) {
  static const std::regex year("[0-9]{5}");
  return is_date_of_text(difference.input) && difference.own == "error 13" &&
         std::regex_search(difference.input.value.get<std::string>(), year);
}

bool large_integer(const Difference& difference) {
  constexpr double limit = 4'611'686'018'427'387'904;  // 2^62
  return is_double(difference.input) && difference.input.target == Target::Int64 &&
         difference.platform == "error 6" && std::fabs(difference.input.value.get<double>()) >= limit;
}

bool century(const Difference& difference) {
  if (!is_date_of_text(difference.input) || is_error(difference.own) || is_error(difference.platform))
    return false;
  const double own = std::atof(difference.own.c_str());
  constexpr double first_day_of_1930 = 10'959;
  constexpr double first_day_of_1950 = 18'264;
  constexpr double days_in_century = 36'525;
  return own >= first_day_of_1930 && own < first_day_of_1950 &&
         std::fabs(std::atof(difference.platform.c_str()) - own - days_in_century) < 1e-9;
}

bool noise_of_time(const Difference& difference) {
  constexpr double tenth_of_a_millisecond = 1.2e-9;
  return is_date_of_text(difference.input) && !is_error(difference.own) && !is_error(difference.platform) &&
         std::fabs(std::atof(difference.own.c_str()) - std::atof(difference.platform.c_str())) <
             tenth_of_a_millisecond;
}

bool last_digits(const Difference& difference) {
  if (!is_text(difference.input) || difference.input.target != Target::Double) return false;
  if (is_error(difference.own) || is_error(difference.platform)) return false;
  const double own = std::atof(difference.own.c_str());
  constexpr double sixteenth_digit = 1e-15;
  return std::fabs(std::atof(difference.platform.c_str()) - own) <= std::fabs(own) * sixteenth_digit;
}

/// The nearest integer is ours, and the platform's lies one further from zero, or is too large there.
bool fraction_rounds_up(const Difference& difference) {
  const Input& input = difference.input;
  if (!is_number_of_text(input) || is_error(difference.own)) return false;
  if (input.target == Target::Double || input.target == Target::Boolean) return false;
  const std::string& text = input.value.get<std::string>();
  const auto value = parse_number(text);
  const double own = std::atof(difference.own.c_str());
  if (!value || std::fabs(*value - own) > 0.5 || text.find_first_of("eE") == std::string::npos) return false;
  if (difference.platform == "error 6") return input.target == Target::UInt8 && own == 0;
  return std::fabs(std::atof(difference.platform.c_str())) == std::fabs(own) + 1;
}

bool comma_of_exponent(const Difference& difference) {
  if (!is_double(difference.input) || difference.input.target != Target::Text) return false;
  std::string own = difference.own;
  std::replace(own.begin(), own.end(), ',', '.');
  return own.find('E') != std::string::npos && own == difference.platform;
}

bool many_decimals(const Difference& difference) {
  if (!is_double(difference.input) || difference.input.target != Target::Text) return false;
  constexpr std::size_t most_decimals = 15;
  const std::size_t comma = difference.platform.find(',');
  const std::size_t decimals = difference.platform.size() - 2 - comma;  // without the quote at the end
  return difference.own.find("E-") != std::string::npos && comma != std::string::npos &&
         difference.platform.find('E') == std::string::npos && decimals > most_decimals;
}

bool formatted_with_exponent(const Difference& difference) {
  if (difference.input.target != Target::Formatted || difference.platform != "error 13") return false;
  return to_text(difference.input.value).find('E') != std::string::npos;
}

}  // namespace

const std::vector<Exception>& exceptions() {
  static const std::vector<Exception> list = {
      {"d exponent", "Wine reads \"1e3\" and not \"1d3\"; Windows reads both", d_exponent},
      {"accented capitals", "Wine takes \"MARÇO\" and \"março\" for different words", accented_capital},
      {"short names",
       "Wine's short names of months and days end in a point, and nothing else is read for them", short_name},
      {"lone a or p", "Wine reads \"2 pm\" and not \"2 p\"", lone_half_of_day},
      {"signs beside a or p",
       "what stands directly behind the mark is passed over or refused differently in Wine",
       signs_beside_half_of_day},
      {"large years", "Wine takes years of more than four digits and lets them wrap", large_year},
      {"large integers", "Wine refuses doubles from 2^62 on as 64-bit integers", large_integer},
      {"Null", "scripts read error 94 for Null; the automation library has the number 13 for every type",
       null_number},
      {"century", "years 30 to 49 are 2030 to 2049 in Wine, and 1930 to 1949 by the settings of Windows",
       century},
      {"noise of time", "Wine adds hours, minutes and seconds as fractions, which leaves noise",
       noise_of_time},
      {"last digits", "Wine multiplies by powers of ten and misses the nearest double", last_digits},
      {"fraction rounds up", "Wine rounds a tiny fraction away from zero", fraction_rounds_up},
      {"comma of exponents", "Wine writes a point in numbers with an exponent", comma_of_exponent},
      {"many decimals", "Windows turns to an exponent where more than 15 decimals would follow",
       many_decimals},
      {"formatted exponents", "Wine cannot format numbers whose text has an exponent",
       formatted_with_exponent},
  };
  return list;
}

const Exception* find_exception(const Difference& difference) {
  for (const Exception& exception : exceptions()) {
    if (exception.covers(difference)) return &exception;
  }
  return nullptr;
}

}  // namespace pradelis::test
