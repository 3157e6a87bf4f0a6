#include "dataaccess/lifter.h"

#include <bit>
#include <charconv>
#include <optional>

#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

// Words that an expression can follow: a literal after any other word is typed by it, or counts rows.
bool expression_follows(std::uint64_t word) noexcept {
  switch (word) {
    case keyword("where"):
    case keyword("and"):
    case keyword("or"):
    case keyword("not"):
    case keyword("like"):
    case keyword("ilike"):
    case keyword("glob"):
    case keyword("between"):
    case keyword("case"):
    case keyword("when"):
    case keyword("then"):
    case keyword("else"):
    case keyword("on"):
    case keyword("having"):
    case keyword("in"):
    case keyword("values"):
      return true;
    default:
      return false;
  }
}

// Types whose arguments are recognised wherever they stand. Others are types only after "as" or "::".
bool is_type(std::string_view word) noexcept {
  switch (keyword(word)) {
    case keyword("varchar"):
    case keyword("nvarchar"):
    case keyword("varchar2"):
    case keyword("varying"):
    case keyword("decimal"):
    case keyword("numeric"):
    case keyword("binary"):
      return true;
    default:
      return equal_ignoring_case(word, "nvarchar2") || equal_ignoring_case(word, "varbinary");
  }
}

template <class Number>
std::errc read_whole(std::string_view text, Number& number) noexcept {
  const char* end = text.data() + text.size();
  const auto [rest, failure] = std::from_chars(text.data(), end, number);
  return failure == std::errc{} && rest != end ? std::errc::invalid_argument : failure;
}

// Nothing for what is no plain decimal number, and for an integer of more than 64 bits, which each
// engine takes for something else.
std::optional<Cell> number_cell(std::string_view text) noexcept {
  if (text.front() == '+') text.remove_prefix(1);
  std::int64_t integer = 0;
  const std::errc failure = read_whole(text, integer);
  if (failure == std::errc{}) return Cell::of(integer);
  double real = 0;
  if (text.find_first_of(".eE") == std::string_view::npos || read_whole(text, real) != std::errc{}) return {};
  return Cell::of(text, CellKind::Decimal);
}

}  // namespace

void Lifter::lift(std::string_view sql, const Dialect& dialect) {
  sql_ = sql;
  dialect_ = &dialect;
  values_.clear();
  out_.clear();
  unquoted_.clear();
  copied_ = 0;
  if (!starts_liftable(sql)) return keep_literals();

  levels_.assign(1, Level{});
  before_ = Before::Operator;
  word_ = 0;
  word_names_type_ = type_follows_ = lifted_ = false;
  sign_ = npos;
  Tokens tokens(sql);
  for (Token token = tokens.next(); token.kind != TokenKind::End; token = tokens.next()) {
    if (token.kind == TokenKind::Unended) return keep_literals();
    read_token(token, tokens.position(token));
  }
  if (levels_.size() != 1 || values_.empty() || values_.size() > dialect.most_parameters) {
    return keep_literals();
  }
  out_.append(sql, copied_);
  text_ = out_;
}

void Lifter::keep_literals() {
  values_.clear();
  text_ = sql_;
}

bool Lifter::starts_liftable(std::string_view sql) {
  Tokens tokens(sql);
  Token first = tokens.next();
  while (first.kind == TokenKind::Open) first = tokens.next();
  first_word_ = first.kind == TokenKind::Word ? keyword(first.text) : 0;
  switch (first_word_) {
    case keyword("select"):
    case keyword("with"):
    case keyword("insert"):
    case keyword("update"):
    case keyword("delete"):
    case keyword("replace"):
    case keyword("merge"):
      return true;
    default:
      return false;
  }
}

void Lifter::read_token(const Token& token, std::size_t position) {
  Level& level = levels_.back();
  const bool first = level.empty;
  level.empty = false;
  switch (token.kind) {
    case TokenKind::Number:
    case TokenKind::Text:
      read_literal(token, position);
      return;
    case TokenKind::Comma:
      before_ = Before::Operator;
      word_ = 0;
      return;
    case TokenKind::Operator:
      read_operator(token, position);
      return;
    case TokenKind::Open:
      level.only_literals = false;
      open(position);
      return;
    case TokenKind::Close:
      level.empty = first;
      close(position);
      return;
    case TokenKind::Marker:
      raise(error_number::wrong_statement,
            "A instrução tem um marcador de parâmetro (?) para o qual não há valor.");
    case TokenKind::Word:
      if (level.converts && first) type_follows_ = true;
      level.only_literals = false;
      read_word(token);
      return;
    default:
      level.only_literals = false;
      before_ = Before::Operand;
      word_ = 0;
      type_follows_ = false;
  }
}

void Lifter::read_word(const Token& token) {
  const std::uint64_t word = keyword(token.text);
  word_names_type_ = type_follows_ || is_type(token.text);
  type_follows_ = word == keyword("as");
  if (word != 0) {
    read_clause(word);
  } else if (equal_ignoring_case(token.text, "returning")) {
    levels_.back().fixed = true;
  }
  before_ = expression_follows(word) ? Before::Operator : Before::Operand;
  word_ = word;
}

void Lifter::read_clause(std::uint64_t word) {
  Level& level = levels_.back();
  switch (word) {
    case keyword("select"):
      level.fixed = level.select_list = true;
      return;
    case keyword("from"):
      // "is distinct from" compares.
      if (!level.select_list || word_ == keyword("distinct")) return;
      level.select_list = false;
      level.fixed = level.inherited;
      return;
    case keyword("where"):
    case keyword("having"):
      level.select_list = false;
      level.fixed = level.inherited;
      return;
    case keyword("values"):
      // Rows that are not inserted have no column that would give a value its type.
      level.fixed = levels_.size() > 1 || first_word_ == keyword("select") || first_word_ == keyword("with");
      return;
    case keyword("order"):
    case keyword("group"):
    case keyword("limit"):
    case keyword("offset"):
    case keyword("fetch"):
    case keyword("top"):
    case keyword("window"):
      level.fixed = true;
      return;
    default:
      return;
  }
}

void Lifter::read_operator(const Token& token, std::size_t position) {
  const bool sign = token.text == "-" || token.text == "+";
  if (sign && before_ == Before::Operator) {
    sign_ = position;
    return;  // what stood before it still counts for the number
  }
  levels_.back().only_literals = false;
  type_follows_ = token.text == "::";
  word_ = 0;
  if (token.text.front() == '.') {
    before_ = Before::Operand;
  } else {
    const bool after_literal = before_ == Before::Literal || before_ == Before::LiteralOperator;
    before_ = after_literal ? Before::LiteralOperator : Before::Operator;
  }
}

void Lifter::read_literal(const Token& token, std::size_t position) {
  const bool is_signed = token.kind == TokenKind::Number && sign_ != npos && sign_ + 1 == position;
  const std::size_t begin = is_signed ? sign_ : position;
  Level& level = levels_.back();
  const bool beside_literal = before_ == Before::Literal || before_ == Before::LiteralOperator;
  if (beside_literal && lifted_) put_back();
  lifted_ = before_ == Before::Operator && !level.fixed && take_value(token, begin);
  if (!lifted_) level.only_literals = false;
  before_ = Before::Literal;
  word_ = 0;
  sign_ = npos;
  type_follows_ = false;
}

// A literal beside another one keeps its type: both stay.
void Lifter::put_back() {
  out_.resize(literal_out_);
  copied_ = literal_source_;
  values_.pop_back();
  lifted_ = false;
}

bool Lifter::take_value(const Token& token, std::size_t begin) {
  const std::size_t end = static_cast<std::size_t>(token.text.data() - sql_.data()) + token.text.size();
  if (token.kind == TokenKind::Text) {
    values_.push_back(Cell::of(unquoted(token.text)));
  } else if (const auto number = number_cell(sql_.substr(begin, end - begin))) {
    values_.push_back(*number);
  } else {
    return false;
  }
  out_.append(sql_, copied_, begin - copied_);
  literal_source_ = begin;
  literal_out_ = out_.size();
  out_ += '?';
  copied_ = end;
  return true;
}

std::string_view Lifter::unquoted(std::string_view literal) {
  literal = literal.substr(1, literal.size() - 2);
  std::size_t quote = literal.find('\'');
  if (quote == std::string_view::npos) return literal;
  // All such texts together are shorter than the statement, so that none of them moves.
  if (unquoted_.empty()) unquoted_.reserve(sql_.size());
  const std::size_t begin = unquoted_.size();
  for (; quote != std::string_view::npos; quote = literal.find('\'')) {
    unquoted_.append(literal, 0, quote + 1);
    literal.remove_prefix(quote + 2);
  }
  unquoted_ += literal;
  return std::string_view(unquoted_).substr(begin);
}

void Lifter::open(std::size_t position) {
  const Level& around = levels_.back();
  Level level;
  level.fixed = level.inherited = around.fixed || word_names_type_;
  level.in_list = level.only_literals = word_ == keyword("in");
  level.converts = word_ == keyword("convert");
  level.values = values_.size();
  level.source = position + 1;
  if (level.in_list) {
    out_.append(sql_, copied_, level.source - copied_);
    copied_ = level.source;
    level.out_size = out_.size();
  }
  levels_.push_back(level);
  before_ = Before::Operator;
  word_ = 0;
  word_names_type_ = type_follows_ = false;
  lifted_ = false;
}

void Lifter::close(std::size_t position) {
  Level& level = levels_.back();
  if (level.in_list && level.empty) {
    raise(error_number::wrong_statement, "A instrução tem uma lista vazia: in ().");
  }
  if (level.only_literals) pad_list(level, position);
  if (levels_.size() > 1) levels_.pop_back();
  before_ = Before::Operand;
  word_ = 0;
  word_names_type_ = type_follows_ = false;
  lifted_ = false;
}

void Lifter::pad_list(Level& list, std::size_t position) {
  const std::size_t count = values_.size() - list.values;
  if (count == 0) return;
  if (count > dialect_->longest_list) {
    values_.resize(list.values);
    out_.resize(list.out_size);
    copied_ = list.source;
    return;
  }
  out_.append(sql_, copied_, position - copied_);
  copied_ = position;
  const Cell last = values_.back();
  for (std::size_t missing = std::bit_ceil(count) - count; missing > 0; --missing) {
    out_ += ",?";
    values_.push_back(last);
  }
}

}  // namespace pradelis::dataaccess
