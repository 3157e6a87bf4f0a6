#include "dataaccess/row_limit.h"

#include <optional>

#include "dataaccess/tokens.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

/// Words outside of all parentheses that have something to say about a query's end.
bool takes_the_end(std::uint64_t word) noexcept {
  switch (word) {
    case keyword("limit"):
    case keyword("offset"):
    case keyword("fetch"):
    case keyword("for"):
    case keyword("into"):
    case keyword("option"):
    case keyword("top"):
      return true;
    default:
      return false;
  }
}

/// Words with which a second query begins, whose rows a limit in the first one would not count.
bool combines(std::string_view word) noexcept {
  return equal_ignoring_case(word, "union") || equal_ignoring_case(word, "except") ||
         equal_ignoring_case(word, "intersect");
}

bool is_word(const Token& token, std::string_view word) noexcept {
  return token.kind == TokenKind::Word && equal_ignoring_case(token.text, word);
}

/// Where the query's limit stands; nothing when it may have none.
std::optional<std::size_t> place_of_limit(std::string_view sql, bool after_select) {
  Tokens tokens(sql);
  Token token = tokens.next();
  if (!is_word(token, "select")) return {};
  std::size_t place = tokens.position(token) + token.text.size();
  token = tokens.next();
  if (is_word(token, "distinct") || is_word(token, "all")) {
    place = tokens.position(token) + token.text.size();
    token = tokens.next();
  }
  int depth = 0;
  for (; token.kind != TokenKind::End; token = tokens.next()) {
    if (token.kind == TokenKind::Open) ++depth;
    if (token.kind == TokenKind::Close) --depth;
    if (token.kind == TokenKind::Semicolon || token.kind == TokenKind::Unended) return {};
    if (depth != 0 || token.kind != TokenKind::Word) continue;
    if (takes_the_end(keyword(token.text)) || (after_select && combines(token.text))) return {};
  }
  if (depth != 0) return {};
  return after_select ? place : sql.size();
}

}  // namespace

LimitedQuery with_row_limit(std::string_view sql, const Dialect& dialect) {
  if (dialect.row_limit.empty()) return {};
  const auto place = place_of_limit(sql, dialect.limit_after_select);
  if (!place) return {};
  // At the end it stands on a line of its own: the statement may close with a comment.
  const char* const separator = dialect.limit_after_select ? " " : "\n";
  return {concat(sql.substr(0, *place), separator, dialect.row_limit, sql.substr(*place)),
          dialect.limit_after_select};
}

}  // namespace pradelis::dataaccess
