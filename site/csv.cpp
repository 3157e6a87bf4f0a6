#include "site/csv.h"

#include "site/format.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view harmful = "=+-@\t\r\n'";

bool begins_harmfully(std::string_view text) {
  return !text.empty() && harmful.find(text.front()) != std::string_view::npos;
}

}  // namespace

CsvWriter::CsvWriter() : file_(byte_order_mark) {}

void CsvWriter::separate() {
  if (row_begun_) file_ += ';';
  row_begun_ = true;
}

CsvWriter& CsvWriter::text(std::string_view text) {
  separate();
  const std::string cell = (begins_harmfully(text) ? "'" : "") + std::string(text);
  if (cell.find_first_of(";\"\r\n\t") == std::string::npos) {
    file_ += cell;
  } else {
    file_ += '"' + replace_all(cell, "\"", "\"\"") + '"';
  }
  return *this;
}

CsvWriter& CsvWriter::amount(const Variant& amount) {
  separate();
  if (!amount.is_null()) file_ += replace_all(amount_text(to_double(amount)), ".", "");
  return *this;
}

CsvWriter& CsvWriter::day(const Variant& date) {
  separate();
  file_ += day_text(date);
  return *this;
}

void CsvWriter::end_row() {
  file_ += "\r\n";
  row_begun_ = false;
}

std::string_view plain_cell(std::string_view cell) {
  return cell.starts_with('\'') && begins_harmfully(cell.substr(1)) ? cell.substr(1) : cell;
}

}  // namespace pradelis::site
