#include "tests/com/conversions/made_texts.h"

namespace pradelis::test {

std::string MadeTexts::number() {
  std::string text;
  text += pick_from({"", "", "", "", " ", "\t", "\u00A0"});
  text += pick_from({"", "", "", "", "-", "+", "(", "R$", "R$ ", "- ", "-R$ "});
  text += chance(8) ? radix() : decimal();
  text += pick_from({"", "", "", "", "", " ", ")", "-", "+", " R$", "R$"});
  return chance(15) ? spoilt(text, "0123456789,.-+()eEdD& $Rx%") : text;
}

std::string MadeTexts::digits(int most) {
  std::string text;
  for (int left = 1 + pick(most); left > 0; --left) text += static_cast<char>('0' + pick(10));
  return text;
}

std::string MadeTexts::decimal() {
  std::string text = digits(chance(10) ? 25 : 6);
  if (chance(30)) text += "." + digits(3);
  if (chance(10)) text += "." + digits(3);
  if (chance(45)) text += "," + digits(chance(10) ? 22 : 4);
  if (chance(12)) {
    text += pick_from({"e", "E", "d", "D"});
    text += pick_from({"", "", "+", "-"});
    text += digits(chance(10) ? 4 : 2);
  }
  return text;
}

std::string MadeTexts::radix() {
  std::string text(pick_from({"&H", "&h", "&O", "&o"}));
  const bool octal = text[1] == 'O' || text[1] == 'o';
  const std::string_view all = octal ? "01234567" : "0123456789ABCDEFabcdef";
  for (int left = 1 + pick(10); left > 0; --left)
    text += all[static_cast<std::size_t>(pick(static_cast<int>(all.size())))];
  return text;
}

std::string MadeTexts::date() {
  std::string text;
  switch (pick(6)) {
    case 0:
      text = time();
      break;
    case 1:
      text = time() + " " + day();
      break;
    case 2:
      text = day() + std::string(pick_from({" ", " ", ", ", "  "})) + time();
      break;
    default:
      text = day();
  }
  return chance(20) ? spoilt(text, "0123456789/-.:, apmjz") : text;
}

std::string MadeTexts::day() { return chance(60) ? numeric_day() : worded_day(); }

std::string MadeTexts::numeric_day() {
  const std::string separator(pick_from({"/", "/", "-", " "}));
  const std::string day = std::to_string(pick(33));
  const std::string month = std::to_string(pick(14));
  const std::string year = std::to_string(chance(50)   ? 1890 + pick(200)
                                          : chance(60) ? pick(110)
                                                       : pick(10'100));
  switch (pick(6)) {
    case 0:
      return year + separator + month + separator + day;
    case 1:
      return month + separator + day + separator + year;
    case 2:
      return day + separator + month;
    case 3:
      return month + separator + year;
    default:
      return day + separator + month + separator + year;
  }
}

std::string MadeTexts::worded_day() {
  std::string month(pick_from({"janeiro", "fev", "março", "Abr", "maio", "JUN", "julho", "ago", "Setembro",
                               "out", "nov", "dezembro", "MARÇO", "dez", "mar", "abril"}));
  if (chance(15)) month += ".";
  const std::string day = std::to_string(pick(33));
  const std::string year = std::to_string(chance(70) ? 1950 + pick(100) : pick(110));
  const std::string separator(pick_from({" ", " ", "-", "/"}));
  const std::string weekday(
      chance(15) ? pick_from({"segunda-feira, ", "terça-feira, ", "sáb, ", "dom ", "Sexta-feira "}) : "");
  switch (pick(5)) {
    case 0:
      return weekday + month + separator + day;
    case 1:
      return month + separator + year;
    case 2:
      return weekday + month + " " + day + ", " + year;
    default:
      return weekday + day + separator + month + separator + year;
  }
}

std::string MadeTexts::time() {
  const std::string separator(chance(90) ? ":" : ".");
  std::string text = std::to_string(pick(26));
  const bool has_minutes = chance(85);
  if (has_minutes) text += separator + std::to_string(pick(62));
  if (has_minutes && chance(50)) text += separator + std::to_string(pick(62));
  if (!has_minutes || chance(20)) text += pick_from({" am", " pm", "am", "PM", " a", " p"});
  return text;
}

std::string MadeTexts::spoilt(std::string text, std::string_view letters) {
  const auto place = static_cast<std::size_t>(pick(static_cast<int>(text.size()) + 1));
  const char letter = letters[static_cast<std::size_t>(pick(static_cast<int>(letters.size())))];
  switch (pick(3)) {
    case 0:
      text.insert(place, 1, letter);
      break;
    case 1:
      if (place < text.size() && static_cast<unsigned char>(text[place]) < 0x80) text[place] = letter;
      break;
    default:
      if (place < text.size() && static_cast<unsigned char>(text[place]) < 0x80) text.erase(place, 1);
  }
  return text;
}

}  // namespace pradelis::test
