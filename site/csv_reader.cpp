#include "site/csv_reader.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "values/text.h"

namespace pradelis::site {
namespace {

[[noreturn]] void refuse(std::size_t line, const std::string& why) {
  throw CsvError{"Linha " + std::to_string(line) + ": " + why};
}

/// Code points of the bytes 0x80 to 0x9F of Windows-1252; 0 for none. From 0xA0 on they are the bytes
/// themselves.
constexpr std::array<std::uint16_t, 32> windows_points = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void append_utf8(std::string& text, std::uint16_t point) {
  if (point < 0x80) {
    text += static_cast<char>(point);
    return;
  }
  if (point < 0x800) {
    text += static_cast<char>(0xC0U | (point >> 6U));
  } else {
    text += static_cast<char>(0xE0U | (point >> 12U));
    text += static_cast<char>(0x80U | ((point >> 6U) & 0x3FU));
  }
  text += static_cast<char>(0x80U | (point & 0x3FU));
}

std::string from_windows(std::string_view file) {
  std::string text;
  std::size_t line = 1;
  for (const char c : file) {
    const auto byte = static_cast<unsigned char>(c);
    const bool upper = byte >= 0x80 && byte < 0xA0;
    const std::uint16_t point = upper ? windows_points[byte - 0x80U] : byte;
    if (upper && point == 0) refuse(line, "há um caractere que não é de UTF-8 nem de Windows-1252.");
    append_utf8(text, point);
    if (c == '\n') ++line;
  }
  return text;
}

void refuse_controls(std::string_view text) {
  std::size_t line = 1;
  for (const char c : text) {
    if (c == '\n') ++line;
    const bool control = static_cast<unsigned char>(c) < 0x20 || c == 0x7f;
    if (control && c != '\n' && c != '\r' && c != '\t') {
      refuse(line, "há um caractere de controle. O arquivo é mesmo um CSV?");
    }
  }
}

/// The character that separates cells: the one that the first row has most of outside quotes.
char separator_of(std::string_view text) {
  constexpr std::array candidates = {';', ',', '\t'};
  std::array<int, candidates.size()> counts{};
  bool quoted = false;
  text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
  for (const char c : text) {
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    if (c == '\n' || c == '\r') break;
    for (std::size_t i = 0; i < candidates.size(); ++i) counts.at(i) += c == candidates.at(i) ? 1 : 0;
  }
  const auto most = std::max_element(counts.begin(), counts.end()) - counts.begin();
  return candidates.at(static_cast<std::size_t>(most));
}

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text), separator_(separator_of(text)) {}

  bool at_end() const { return at_ == text_.size(); }

  CsvRow read_row() {
    CsvRow row;
    row.line = line_;
    for (;;) {
      row.cells.push_back(peek() == '"' ? read_quoted() : read_plain());
      if (row.cells.size() > most_csv_columns) {
        refuse(row.line, "tem mais de " + std::to_string(most_csv_columns) + " colunas.");
      }
      if (peek() != separator_ || at_end()) break;
      ++at_;
    }
    skip_line_end();
    return row;
  }

 private:
  char peek() const { return at_end() ? '\n' : text_[at_]; }
  bool at_line_end() const { return peek() == '\n' || peek() == '\r'; }

  void skip_line_end() {
    if (at_end()) return;
    if (text_[at_] == '\r') ++at_;
    if (!at_end() && text_[at_] == '\n') ++at_;
    ++line_;
  }

  void check_size(const std::string& cell, std::size_t line) const {
    if (cell.size() > longest_csv_cell) {
      refuse(line, "um campo tem mais de 32 KB. Falta fechar as aspas de algum campo?");
    }
  }

  std::string read_plain() {
    std::string cell;
    for (; !at_line_end() && peek() != separator_; ++at_) {
      if (peek() == '"') refuse(line_, "há aspas no meio de um campo que não começa com aspas.");
      cell += peek();
    }
    check_size(cell, line_);
    return cell;
  }

  std::string read_quoted() {
    const std::size_t begin = line_;
    std::string cell;
    for (++at_;; ++at_) {
      if (at_end()) refuse(begin, "as aspas que abrem um campo aqui não fecham.");
      if (peek() == '"') {
        ++at_;
        if (at_end() || peek() != '"') break;
      }
      const bool lone_return = peek() == '\r' && (at_ + 1 == text_.size() || text_[at_ + 1] != '\n');
      if (peek() == '\n' || lone_return) ++line_;
      cell += peek();
      check_size(cell, begin);
    }
    if (!at_line_end() && peek() != separator_) {
      refuse(line_,
             "depois das aspas que fecham um campo vem outra coisa. Aspas dentro de um campo são escritas"
             " duas vezes (\"\").");
    }
    return cell;
  }

  std::string_view text_;
  char separator_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
};

bool blank(const CsvRow& row) {
  return std::all_of(row.cells.begin(), row.cells.end(),
                     [](const std::string& cell) { return trim(cell).empty(); });
}

}  // namespace

std::string csv_text(std::string_view file) {
  if (file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF")) {
    throw CsvError{"O arquivo está em UTF-16. Salve-o como CSV UTF-8 e tente de novo."};
  }
  if (file.starts_with("\xEF\xBB\xBF")) file.remove_prefix(3);
  std::string text = is_valid_utf8(file) ? std::string(file) : from_windows(file);
  refuse_controls(text);
  return text;
}

CsvTable read_csv(std::string_view text) {
  Reader reader(text);
  CsvTable table;
  while (!reader.at_end()) {
    CsvRow row = reader.read_row();
    if (blank(row)) continue;
    if (table.headings.empty()) {
      table.headings = std::move(row.cells);
    } else if (table.rows.size() == most_csv_rows) {
      refuse(row.line, "o arquivo tem mais de 5.000 linhas. Divida-o em partes.");
    } else {
      table.rows.push_back(std::move(row));
    }
  }
  if (table.headings.empty()) throw CsvError{"O arquivo está vazio."};
  if (table.rows.empty()) throw CsvError{"O arquivo só tem o cabeçalho."};
  return table;
}

}  // namespace pradelis::site
