#include "dataaccess/lifter.h"

#include <bit>

#include "dataaccess/failures.h"
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

// Powers of two, and multiples of the largest step for long lists, so that padding never costs much.
std::size_t padded_length(std::size_t count) noexcept {
  constexpr std::size_t largest_step = 2048;
  return count <= largest_step ? std::bit_ceil(count)
                               : (count + largest_step - 1) / largest_step * largest_step;
}

}  // namespace

void Lifter::lift(std::string_view sql, const Dialect& dialect) {
  sql_ = sql;
  dialect_ = &dialect;
  if (const StatementShape* shape = shapes_.match(sql, literals_)) {
    for (const Cell& value : literals_.values()) {
      if (value.kind == CellKind::Text) check_statement_text(value.text());
    }
    text_ = {shape->text, shape->hash};
    return;
  }
  check_statement_text(sql);
  take_apart();
}

void Lifter::take_apart() {
  literals_.begin(sql_);
  out_.clear();
  gaps_.clear();
  has_list_ = false;
  copied_ = 0;
  if (!starts_liftable(sql_)) return keep_literals();

  levels_.assign(1, Level{});
  before_ = Before::Operator;
  word_ = 0;
  word_names_type_ = type_follows_ = lifted_ = false;
  sign_ = npos;
  Tokens tokens(sql_);
  for (Token token = tokens.next(); token.kind != TokenKind::End; token = tokens.next()) {
    if (token.kind == TokenKind::Unended) return keep_literals();
    read_token(token, tokens.position(token));
  }
  if (levels_.size() != 1 || literals_.size() > dialect_->most_parameters) return keep_literals();
  out_.append(sql_, copied_);
  text_ = StatementText::of(out_);
  if (!has_list_) shapes_.remember({std::string(sql_), gaps_, out_, text_.hash});
}

void Lifter::keep_literals() {
  literals_.begin(sql_);
  text_ = StatementText::of(sql_);
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
  literals_.shrink(literals_.size() - 1);
  gaps_.pop_back();
  lifted_ = false;
}

bool Lifter::take_value(const Token& token, std::size_t begin) {
  const std::size_t end = static_cast<std::size_t>(token.text.data() - sql_.data()) + token.text.size();
  if (!literals_.add(token.kind, sql_.substr(begin, end - begin))) return false;
  out_.append(sql_, copied_, begin - copied_);
  literal_source_ = begin;
  literal_out_ = out_.size();
  out_ += '?';
  copied_ = end;
  gaps_.push_back({begin, end});
  return true;
}

void Lifter::open(std::size_t position) {
  const Level& around = levels_.back();
  Level level;
  level.fixed = level.inherited = around.fixed || word_names_type_;
  level.in_list = level.only_literals = word_ == keyword("in");
  level.converts = word_ == keyword("convert");
  level.values = literals_.size();
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
  const std::size_t count = literals_.size() - list.values;
  if (count == 0) return;
  has_list_ = true;
  if (count > dialect_->longest_list) {
    literals_.shrink(list.values);
    out_.resize(list.out_size);
    copied_ = list.source;
    return;
  }
  out_.append(sql_, copied_, position - copied_);
  copied_ = position;
  const std::size_t missing = padded_length(count) - count;
  literals_.repeat_last(missing);
  for (std::size_t i = 0; i < missing; ++i) out_ += ",?";
}

}  // namespace pradelis::dataaccess
