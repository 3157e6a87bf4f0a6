#include "dataaccess/row_limit.h"

#include "dataaccess/tokens.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

/// Words outside of all parentheses after which the end of the statement is no place for a limit.
bool takes_the_end(std::uint64_t word) noexcept {
  switch (word) {
    case keyword("limit"):
    case keyword("offset"):
    case keyword("fetch"):
    case keyword("for"):
    case keyword("into"):
    case keyword("option"):
      return true;
    default:
      return false;
  }
}

bool has_free_end(std::string_view sql) {
  Tokens tokens(sql);
  Token token = tokens.next();
  if (token.kind != TokenKind::Word || keyword(token.text) != keyword("select")) return false;
  int depth = 0;
  for (; token.kind != TokenKind::End; token = tokens.next()) {
    if (token.kind == TokenKind::Open) ++depth;
    if (token.kind == TokenKind::Close) --depth;
    if (token.kind == TokenKind::Semicolon || token.kind == TokenKind::Unended) return false;
    if (depth == 0 && token.kind == TokenKind::Word && takes_the_end(keyword(token.text))) return false;
  }
  return depth == 0;
}

}  // namespace

std::string with_row_limit(std::string_view sql, const Dialect& dialect) {
  if (dialect.row_limit.empty() || !has_free_end(sql)) return {};
  // On a line of its own: the statement may end with a comment.
  return concat(sql, "\n", dialect.row_limit);
}

}  // namespace pradelis::dataaccess
