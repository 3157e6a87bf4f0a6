#pragma once

#include <string>
#include <string_view>

#include "values/variant.h"

namespace pradelis::site {

/// Writes a table as the CSV that spreadsheets under Brazilian settings open with a double click:
/// semicolons between cells, decimal comma, a byte-order mark before UTF-8 text, lines that end in CR LF.
///
/// A text that a spreadsheet would take for a formula (it begins with = + - @, a tab or a line break)
/// gets an apostrophe in front, and so does one that begins with an apostrophe: `plain_cell` takes
/// exactly that apostrophe away again.
class CsvWriter {
 public:
  CsvWriter();

  CsvWriter& text(std::string_view text);
  /// "1234,56"; an empty cell for Null.
  CsvWriter& amount(const Variant& amount);
  /// dd/mm/aaaa; an empty cell for Null.
  CsvWriter& day(const Variant& date);
  void end_row();

  std::string take() { return std::move(file_); }

 private:
  void separate();

  std::string file_;
  bool row_begun_ = false;
};

/// The text that a cell written by `CsvWriter` stands for.
std::string_view plain_cell(std::string_view cell);

}  // namespace pradelis::site
