#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The words of a statement, for what has to be changed in one: literals, function names, lists.
namespace pradelis::dataaccess {

enum class TokenKind : std::uint8_t {
  End,
  Word,          ///< a keyword or a plain name, also one with "@" or "#" before it
  QuotedName,    ///< "name", [name] or `name`, with its quotes
  Text,          ///< 'text', with its quotes; a quote inside is doubled
  PrefixedText,  ///< N'text', x'00', E'text', U&'text', with prefix and quotes
  Number,        ///< unsigned: 12, 1.5, .5, 1e3, 0x1F
  Open,          ///< (
  Close,         ///< )
  Comma,
  Semicolon,
  Marker,    ///< "?", a parameter marker
  Operator,  ///< any other run of signs, such as "=", "<>", "||", "."; "+" and "-" stand alone
  Unended,   ///< a quoted text, quoted name or comment without its end: reaches to the statement's end
};

struct Token {
  TokenKind kind = TokenKind::End;
  std::string_view text;  ///< points into the statement
};

/// Reads a statement from left to right. Blanks and comments are passed over.
class Tokens {
 public:
  explicit Tokens(std::string_view statement) noexcept
      : begin_(statement.data()), at_(begin_), end_(begin_ + statement.size()) {}

  /// The next token; kind End, again and again, after the last.
  Token next() noexcept;
  /// Position of a token in the statement, in bytes.
  std::size_t position(const Token& token) const noexcept {
    return static_cast<std::size_t>(token.text.data() - begin_);
  }

 private:
  Token take(TokenKind kind, const char* end) noexcept;
  Token quoted(TokenKind kind, const char* start, char quote, bool backslash = false) noexcept;
  Token word() noexcept;
  Token number() noexcept;
  Token sign() noexcept;
  bool skip_comment() noexcept;
  char peek(std::size_t ahead) const noexcept {
    return static_cast<std::size_t>(end_ - at_) > ahead ? at_[ahead] : '\0';
  }

  const char* begin_;
  const char* at_;
  const char* end_;
};

/// A word of up to 8 letters in lower case, as a number that can be compared and switched on; 0 for a
/// longer one.
constexpr std::uint64_t keyword(std::string_view word) noexcept {
  if (word.size() > 8) return 0;
  std::uint64_t packed = 0;
  for (const char letter : word) {
    const bool upper = letter >= 'A' && letter <= 'Z';
    packed = packed << 8 | static_cast<unsigned char>(upper ? letter | 0x20 : letter);
  }
  return packed;
}

}  // namespace pradelis::dataaccess
