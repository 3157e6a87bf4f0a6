#include "values/date_words.h"

#include <array>

namespace pradelis {
namespace {

struct Name {
  std::string_view full;
  std::string_view brief;
};

constexpr std::array<Name, 12> months = {{{"janeiro", "jan"},
                                          {"fevereiro", "fev"},
                                          {"março", "mar"},
                                          {"abril", "abr"},
                                          {"maio", "mai"},
                                          {"junho", "jun"},
                                          {"julho", "jul"},
                                          {"agosto", "ago"},
                                          {"setembro", "set"},
                                          {"outubro", "out"},
                                          {"novembro", "nov"},
                                          {"dezembro", "dez"}}};

constexpr std::array<Name, 7> weekdays = {{{"segunda-feira", "seg"},
                                           {"terça-feira", "ter"},
                                           {"quarta-feira", "qua"},
                                           {"quinta-feira", "qui"},
                                           {"sexta-feira", "sex"},
                                           {"sábado", "sáb"},
                                           {"domingo", "dom"}}};

/// A short name may end in a point.
std::size_t length_of_name(std::string_view text, const Name& name) {
  if (text.starts_with(name.full)) return name.full.size();
  if (!text.starts_with(name.brief)) return 0;
  const std::size_t length = name.brief.size();
  return text.size() > length && text[length] == '.' ? length + 1 : length;
}

constexpr bool is_letter(char letter) { return letter >= 'a' && letter <= 'z'; }

DateWord find_half_of_day(std::string_view text) {
  const DateWord::Kind kind = text.front() == 'a'   ? DateWord::Kind::morning
                              : text.front() == 'p' ? DateWord::Kind::afternoon
                                                    : DateWord::Kind::none;
  if (kind == DateWord::Kind::none) return {};
  if (text.size() > 1 && text[1] == 'm') return {kind, 0, 2};
  if (text.size() > 1 && is_letter(text[1])) return {};
  return {kind, 0, 1};
}

}  // namespace

DateWord find_date_word(std::string_view text) noexcept {
  std::int32_t month = 0;
  for (const Name& name : months) {
    ++month;
    if (const std::size_t length = length_of_name(text, name)) return {DateWord::Kind::month, month, length};
  }
  for (const Name& name : weekdays) {
    if (const std::size_t length = length_of_name(text, name)) return {DateWord::Kind::weekday, 0, length};
  }
  return find_half_of_day(text);
}

}  // namespace pradelis
