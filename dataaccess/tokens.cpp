#include "dataaccess/tokens.h"

#include <array>

namespace pradelis::dataaccess {
namespace {

enum : std::uint8_t { blank = 1, name_start = 2, digit = 4, operator_sign = 8 };

constexpr std::array<std::uint8_t, 256> make_classes() {
  std::array<std::uint8_t, 256> classes{};
  for (const char c : {' ', '\t', '\n', '\r', '\f', '\v'}) classes[static_cast<unsigned char>(c)] = blank;
  for (unsigned c = 'a'; c <= 'z'; ++c) classes[c] = classes[c - 0x20] = name_start;
  for (unsigned c = 0x80; c <= 0xFF; ++c) classes[c] = name_start;
  for (const char c : {'_', '@', '#', '$'}) classes[static_cast<unsigned char>(c)] = name_start;
  for (unsigned c = '0'; c <= '9'; ++c) classes[c] = digit;
  for (const char c : {'=', '<', '>', '!', '|', '&', '*', '/', '%', '^', '~', ':', '.'}) {
    classes[static_cast<unsigned char>(c)] = operator_sign;
  }
  return classes;
}
constexpr auto classes = make_classes();

constexpr bool is(char c, unsigned wanted) noexcept {
  return (classes[static_cast<unsigned char>(c)] & wanted) != 0;
}

}  // namespace

Token Tokens::take(TokenKind kind, const char* end) noexcept {
  const Token token{kind, {at_, static_cast<std::size_t>(end - at_)}};
  at_ = end;
  return token;
}

// A quoted token from at_ on whose opening quote stands just before `start`.
Token Tokens::quoted(TokenKind kind, const char* start, char quote, bool backslash) noexcept {
  for (const char* c = start; c < end_; ++c) {
    if (backslash && *c == '\\') {
      ++c;
    } else if (*c == quote) {
      if (c + 1 == end_ || c[1] != quote) return take(kind, c + 1);
      ++c;
    }
  }
  return take(TokenKind::Unended, end_);
}

Token Tokens::word() noexcept {
  const char* c = at_ + 1;
  while (c < end_ && is(*c, name_start | digit)) ++c;
  const auto length = c - at_;
  if (c < end_ && *c == '\'' && length == 1 && is(*at_, name_start)) {
    return quoted(TokenKind::PrefixedText, c + 1, '\'', *at_ == 'E' || *at_ == 'e');
  }
  if (end_ - c >= 2 && c[0] == '&' && c[1] == '\'' && length == 1 && (*at_ == 'U' || *at_ == 'u')) {
    return quoted(TokenKind::PrefixedText, c + 2, '\'');
  }
  return take(TokenKind::Word, c);
}

Token Tokens::number() noexcept {
  const char* c = at_;
  while (c < end_ && is(*c, digit)) ++c;
  if (c < end_ && *c == '.') {
    ++c;
    while (c < end_ && is(*c, digit)) ++c;
  }
  if (c < end_ && (*c == 'e' || *c == 'E')) {
    const char* exponent = c + 1;
    if (exponent < end_ && (*exponent == '+' || *exponent == '-')) ++exponent;
    if (exponent < end_ && is(*exponent, digit)) {
      c = exponent;
      while (c < end_ && is(*c, digit)) ++c;
    }
  }
  // "0x1F", and what is no number of any engine ("12abc"), to its end.
  while (c < end_ && is(*c, name_start | digit)) ++c;
  return take(TokenKind::Number, c);
}

Token Tokens::sign() noexcept {
  const char* c = at_ + 1;
  if (*at_ != '+' && *at_ != '-' && is(*at_, operator_sign)) {
    while (c < end_ && is(*c, operator_sign) && !(*c == '/' && c + 1 < end_ && c[1] == '*') &&
           !(*c == '.' && c + 1 < end_ && is(c[1], digit))) {
      ++c;
    }
  }
  return take(TokenKind::Operator, c);
}

bool Tokens::skip_comment() noexcept {
  if (peek(0) == '-' && peek(1) == '-') {
    while (at_ < end_ && *at_ != '\n') ++at_;
    return true;
  }
  if (peek(0) == '/' && peek(1) == '*') {
    for (const char* c = at_ + 2; c + 1 < end_; ++c) {
      if (c[0] == '*' && c[1] == '/') {
        at_ = c + 2;
        return true;
      }
    }
  }
  return false;
}

Token Tokens::next() noexcept {
  do {
    while (at_ < end_ && is(*at_, blank)) ++at_;
  } while (at_ < end_ && (*at_ == '-' || *at_ == '/') && skip_comment());
  if (at_ == end_) return {TokenKind::End, {end_, 0}};
  if (is(*at_, name_start)) return word();
  if (is(*at_, digit) || (*at_ == '.' && is(peek(1), digit))) return number();
  switch (*at_) {
    case '\'':
      return quoted(TokenKind::Text, at_ + 1, '\'');
    case '"':
      return quoted(TokenKind::QuotedName, at_ + 1, '"');
    case '`':
      return quoted(TokenKind::QuotedName, at_ + 1, '`');
    case '[':
      return quoted(TokenKind::QuotedName, at_ + 1, ']');
    case '(':
      return take(TokenKind::Open, at_ + 1);
    case ')':
      return take(TokenKind::Close, at_ + 1);
    case ',':
      return take(TokenKind::Comma, at_ + 1);
    case ';':
      return take(TokenKind::Semicolon, at_ + 1);
    case '?':
      return take(TokenKind::Marker, at_ + 1);
    case '/':
      if (peek(1) == '*') return take(TokenKind::Unended, end_);
      [[fallthrough]];
    default:
      return sign();
  }
}

}  // namespace pradelis::dataaccess
