#include "dataaccess/statement_shapes.h"

#include <algorithm>

#include "dataaccess/tokens.h"

namespace pradelis::dataaccess {
namespace {

constexpr std::size_t most_shapes = 256;
constexpr std::size_t longest_source = 2000;
constexpr std::size_t longest_beginning = 48;

constexpr bool can_begin_literal(char c) noexcept {
  return (c >= '0' && c <= '9') || c == '\'' || c == '-' || c == '+' || c == '.';
}

// What stands before the first character with which a literal could begin is the same in all
// statements of a shape.
std::size_t hash_of_beginning(std::string_view sql) noexcept {
  std::size_t size = 0;
  const std::size_t most = std::min(sql.size(), longest_beginning);
  while (size < most && !can_begin_literal(sql[size])) ++size;
  return std::hash<std::string_view>{}(sql.substr(0, size));
}

// Reads the literal at the beginning of `rest`; gives its length, 0 when there is none.
std::size_t read_literal(std::string_view rest, Literals& literals) {
  if (rest.empty() || !can_begin_literal(rest.front())) return 0;
  const std::size_t sign = rest.front() == '-' || rest.front() == '+' ? 1 : 0;
  Tokens tokens(rest.substr(sign));
  const Token token = tokens.next();
  const bool fits = token.kind == TokenKind::Number || (token.kind == TokenKind::Text && sign == 0);
  if (!fits || tokens.position(token) != 0) return 0;
  const std::size_t size = sign + token.text.size();
  return literals.add(token.kind, rest.substr(0, size)) ? size : 0;
}

bool matches(const StatementShape& shape, std::string_view sql, Literals& literals) {
  const std::string_view source = shape.source;
  literals.begin(sql);
  std::size_t copied = 0;  // in source
  std::size_t at = 0;      // in sql
  for (const StatementShape::Gap& gap : shape.gaps) {
    const std::size_t between = gap.begin - copied;
    if (sql.size() - at < between || sql.substr(at, between) != source.substr(copied, between)) return false;
    at += between;
    const std::size_t size = read_literal(sql.substr(at), literals);
    if (size == 0) return false;
    at += size;
    copied = gap.end;
  }
  return sql.substr(at) == source.substr(copied);
}

// A sign or a number after these would be read together with them.
bool joins(char before) noexcept {
  const auto byte = static_cast<unsigned char>(before);
  return byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
         (byte >= 'a' && byte <= 'z') || std::string_view("_@#$.+-").find(before) != std::string_view::npos;
}

}  // namespace

const StatementShape* StatementShapes::match(std::string_view sql, Literals& literals) {
  for (const StatementShape* shape : recent_) {
    if (shape == nullptr) break;
    if (!matches(*shape, sql, literals)) continue;
    if (shape != recent_.front()) note_recent(shape);
    return shape;
  }
  const auto [first, last] = shapes_.equal_range(hash_of_beginning(sql));
  for (auto candidate = first; candidate != last; ++candidate) {
    if (!matches(candidate->second, sql, literals)) continue;
    note_recent(&candidate->second);
    return &candidate->second;
  }
  return nullptr;
}

void StatementShapes::note_recent(const StatementShape* shape) noexcept {
  const auto place = std::find(recent_.begin(), recent_.end() - 1, shape);
  std::move_backward(recent_.begin(), place, place + 1);
  recent_.front() = shape;
}

void StatementShapes::remember(StatementShape shape) {
  if (shape.source.size() > longest_source) return;
  for (const StatementShape::Gap& gap : shape.gaps) {
    if (gap.begin == 0 || joins(shape.source[gap.begin - 1])) return;
  }
  if (shapes_.size() == most_shapes) {
    shapes_.clear();
    recent_.fill(nullptr);
  }
  const std::size_t hash = hash_of_beginning(shape.source);
  shapes_.emplace(hash, std::move(shape));
}

}  // namespace pradelis::dataaccess
