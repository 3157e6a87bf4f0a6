#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Reads CSV files as people send them: written by a spreadsheet, by another program, or by this site.
namespace pradelis::site {

struct CsvRow {
  std::size_t line = 0;  ///< in the file, from 1 on; its first, when fields have line breaks
  std::vector<std::string> cells;
};

/// A file: its first row names the columns. Blank lines are left out.
struct CsvTable {
  std::vector<std::string> headings;
  std::vector<CsvRow> rows;  ///< may have more or fewer cells than there are headings
};

/// Why a file cannot be read, in words for whoever sent it, with the line.
struct CsvError {
  std::string message;
};

/// Most that a file may have: rows below the first, columns, and bytes in a field.
inline constexpr std::size_t most_csv_rows = 5000;
inline constexpr std::size_t most_csv_columns = 100;
inline constexpr std::size_t longest_csv_cell = 32 * 1024;

/// A file's text in UTF-8: without a byte-order mark, and converted when it is none, but Windows-1252. Throws
/// CsvError for other encodings, and for control characters.
std::string csv_text(std::string_view file);

/// Takes the text apart. Cells are separated by semicolons, commas or tabs, whichever the first line has most
/// of; a cell in quotes may hold all of them, and line breaks, and its quotes doubled. Throws CsvError.
CsvTable read_csv(std::string_view text);

}  // namespace pradelis::site
