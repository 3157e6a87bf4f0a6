#include "dataaccess/literals.h"

#include <charconv>
#include <cstring>
#include <optional>
#include <system_error>

namespace pradelis::dataaccess {
namespace {

template <class Number>
std::errc read_whole(std::string_view text, Number& number) noexcept {
  const char* end = text.data() + text.size();
  const auto [rest, failure] = std::from_chars(text.data(), end, number);
  return failure == std::errc{} && rest != end ? std::errc::invalid_argument : failure;
}

std::optional<Cell> number_cell(std::string_view text) noexcept {
  if (text.front() == '+') text.remove_prefix(1);
  std::int64_t integer = 0;
  if (read_whole(text, integer) == std::errc{}) return Cell::of(integer);
  double real = 0;
  if (text.find_first_of(".eE") == std::string_view::npos || read_whole(text, real) != std::errc{}) return {};
  return Cell::of(text, CellKind::Decimal);
}

}  // namespace

void Literals::begin(std::string_view sql) noexcept {
  statement_size_ = sql.size();
  values_.clear();
  unquoted_.clear();
}

bool Literals::add(TokenKind kind, std::string_view literal) {
  if (kind == TokenKind::Text) {
    values_.push_back(Cell::of(unquoted(literal)));
    return true;
  }
  const auto number = number_cell(literal);
  if (number) values_.push_back(*number);
  return number.has_value();
}

std::string_view Literals::unquoted(std::string_view literal) {
  literal = literal.substr(1, literal.size() - 2);
  std::size_t quote = literal.find('\'');
  if (quote == std::string_view::npos) return literal;
  // All such texts together are shorter than the statement, so that none of them moves.
  unquoted_.reserve(statement_size_);
  const std::size_t begin = unquoted_.size();
  for (; quote != std::string_view::npos; quote = literal.find('\'')) {
    unquoted_.append(literal, 0, quote + 1);
    literal.remove_prefix(quote + 2);
  }
  unquoted_ += literal;
  return std::string_view(unquoted_).substr(begin);
}

}  // namespace pradelis::dataaccess
