#include "tests/com/conversions/spellings.h"

#include <regex>

#include "values/text.h"

namespace pradelis::test {

std::string with_e_for_d(const std::string& text) {
  static const std::regex exponent("^([^&]*[0-9.,])[dD]");
  return std::regex_replace(text, exponent, "$1e");
}

std::string with_full_names(const std::string& text) {
  constexpr const char* months[][2] = {{"jan", "eiro"}, {"fev", "ereiro"}, {"mar", "ço"},
                                       {"abr", "il"},   {"mai", "o"},      {"jun", "ho"},
                                       {"jul", "ho"},   {"ago", "sto"},    {"set", "embro"},
                                       {"out", "ubro"}, {"nov", "embro"},  {"dez", "embro"}};
  std::string result = to_lower(text);
  for (const auto& [brief, rest] : months) {
    const std::size_t place = result.find(brief);
    if (place == std::string::npos) continue;
    const std::size_t end = place + 3;
    if (result.compare(end, std::string(rest).size(), rest) == 0) continue;
    if (end < result.size() && result[end] == '.') result.erase(end, 1);
    result.insert(end, rest);
  }
  static const std::regex weekday(
      "(seg|ter|qua|qui|sex|sáb|dom)(unda-feira|ça-feira|rta-feira|nta-feira|ta-feira|ado|ingo|\\.)?");
  return std::regex_replace(result, weekday, "");
}

std::string with_full_half_of_day(const std::string& text) {
  static const std::regex half("([0-9 ])([ap])( |$)");
  return std::regex_replace(to_lower(text), half, "$1$2m$3");
}

}  // namespace pradelis::test
