#include "dataaccess/exists_form.h"

#include <cstddef>
#include <iterator>
#include <vector>

#include "dataaccess/select_reader.h"
#include "dataaccess/tokens.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

bool is(const Token& token, std::string_view word) {
  return token.kind == TokenKind::Word && equal_ignoring_case(token.text, word);
}

// What has to stand from the condition's first word on; "" is any name.
constexpr std::string_view pattern[] = {"",      "in",     "(", "select", "", "from", "",
                                        "union", "select", "",  "from",   "", ")"};
constexpr std::size_t first_column = 4, first_table = 6, second_column = 9, second_table = 11;

bool matches(const std::vector<Token>& tokens, std::size_t begin) {
  for (std::size_t i = 0; i < std::size(pattern); ++i) {
    const Token& token = tokens[begin + i];
    const bool sign = token.kind == TokenKind::Open || token.kind == TokenKind::Close;
    const bool fits = pattern[i].empty() ? token.kind == TokenKind::Word
                                         : (sign ? token.text == pattern[i] : is(token, pattern[i]));
    if (!fits) return false;
  }
  return true;
}

}  // namespace

std::string with_exists(std::string_view sql) {
  std::vector<Token> tokens;
  std::vector<int> depths;  // of parentheses, by token
  int depth = 0;
  Tokens reader(sql);
  bool united = false, negated = false;
  for (Token token = reader.next(); token.kind != TokenKind::End; token = reader.next()) {
    united = united || is(token, "union");
    negated = negated || is(token, "not");  // which tells an unknown condition from a false one
    tokens.push_back(token);
    depths.push_back(depth);
    if (token.kind == TokenKind::Open) ++depth;
    if (token.kind == TokenKind::Close) --depth;
  }
  if (!united || negated) return std::string(sql);
  const auto select = read_table_select(sql);
  if (!select) return std::string(sql);
  for (std::size_t at = 1; at + std::size(pattern) <= tokens.size(); ++at) {
    if (depths[at] != 0) continue;  // of another query, whose columns are others
    if (!(is(tokens[at - 1], "where") || is(tokens[at - 1], "and")) || !matches(tokens, at)) continue;
    const std::string_view t = tokens[at + first_table].text, u = tokens[at + second_table].text;
    // Inside, the query's own table must not be hidden by one of its name.
    const bool hidden =
        equal_ignoring_case(t, select->qualifier) || equal_ignoring_case(u, select->qualifier);
    if (hidden) continue;
    const std::string value = concat(select->qualifier, ".", tokens[at].text);
    const Token& last = tokens[at + std::size(pattern) - 1];
    return concat(sql.substr(0, reader.position(tokens[at])), "exists (select 1 from ", t, " where ", value,
                  " = ", t, ".", tokens[at + first_column].text, " union all select 1 from ", u, " where ",
                  value, " = ", u, ".", tokens[at + second_column].text, sql.substr(reader.position(last)));
  }
  return std::string(sql);
}

}  // namespace pradelis::dataaccess
