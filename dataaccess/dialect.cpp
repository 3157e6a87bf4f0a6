#include "dataaccess/dialect.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "dataaccess/exists_form.h"
#include "dataaccess/tokens.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

// SQLite's own upper case knows ASCII only. In conditions it becomes a function of ours under a name
// of its own, so that an index on it serves them, and so that a program without the function cannot
// write to that index by mistake.
constexpr FunctionName sqlite_functions[] = {
    {"isnull", "ifnull", true},
    {"upper", "maiuscula", false},
    {"datalength", "length"},
};

constexpr FunctionName common_functions[] = {{"isnull", "coalesce"}, {"datalength", "octet_length"}};
constexpr FunctionName oracle_functions[] = {{"isnull", "nvl"}, {"datalength", "dbms_lob.getlength"}};

// Whether the present place is in a select list or a sort or group key, at any depth.
class Place {
 public:
  void read(const Token& token) {
    switch (token.kind) {
      case TokenKind::Open:
        levels_.push_back({inside(), inside()});
        return;
      case TokenKind::Close:
        if (levels_.size() > 1) levels_.pop_back();
        return;
      case TokenKind::Word:
        read_word(keyword(token.text));
        return;
      default:
        return;
    }
  }
  bool inside() const { return levels_.back().inside; }

 private:
  struct Level {
    bool inside = false;
    bool inherited = false;
  };

  void read_word(std::uint64_t word) {
    Level& level = levels_.back();
    switch (word) {
      case keyword("select"):
      case keyword("order"):
      case keyword("group"):
        level.inside = true;
        return;
      case keyword("from"):
      case keyword("where"):
      case keyword("having"):
        level.inside = level.inherited;
        return;
      default:
        return;
    }
  }

  std::vector<Level> levels_{Level{}};
};

const FunctionName* function_named(std::string_view word, const Dialect& dialect, bool key_or_list) {
  for (const FunctionName& function : dialect.functions) {
    if ((function.everywhere || !key_or_list) && equal_ignoring_case(word, function.name)) return &function;
  }
  return nullptr;
}

// Words that no engine, or not every engine, takes for a column's name.
constexpr std::string_view reserved_words[] = {
    "add",    "all",    "alter",   "and",    "as",     "asc",     "between", "by",      "case",
    "check",  "column", "create",  "cross",  "date",   "default", "delete",  "desc",    "drop",
    "else",   "end",    "exists",  "file",   "for",    "from",    "group",   "having",  "in",
    "index",  "insert", "into",    "is",     "join",   "key",     "level",   "like",    "limit",
    "not",    "null",   "number",  "on",     "option", "or",      "order",   "primary", "public",
    "rows",   "select", "session", "set",    "size",   "table",   "then",    "to",      "union",
    "unique", "update", "user",    "values", "view",   "when",    "where",   "with"};

bool is_plain_name(std::string_view name, NameCase name_case) {
  const auto plain = [name_case](char c) {
    return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z' && name_case != NameCase::Upper) ||
           (c >= 'A' && c <= 'Z' && name_case != NameCase::Lower);
  };
  const bool digit_first = name.empty() || (name.front() >= '0' && name.front() <= '9');
  return !digit_first && std::all_of(name.begin(), name.end(), plain) &&
         std::none_of(std::begin(reserved_words), std::end(reserved_words),
                      [name](std::string_view word) { return equal_ignoring_case(word, name); });
}

}  // namespace

const Dialect sqlite_dialect{.engine = "sqlite",
                             .functions = sqlite_functions,
                             .longest_list = 28'672,
                             .reads_unions_whole = true,
                             .begin_reading = "begin",
                             .end_reading = "commit"};
const Dialect sqlite_odbc_dialect{.engine = "sqlite-odbc", .functions = common_functions};
const Dialect postgresql_dialect{.engine = "postgresql",
                                 .functions = common_functions,
                                 .name_case = NameCase::Lower,
                                 .row_limit = "limit ?"};
// The suite's statements are written in its dialect. It takes 2100 parameters.
const Dialect sql_server_dialect{.engine = "sqlserver",
                                 .functions = {},
                                 .row_limit = "top (?)",
                                 .limit_after_select = true,
                                 .longest_list = 1024,
                                 .most_parameters = 2000};
const Dialect oracle_dialect{.engine = "oracle",
                             .functions = oracle_functions,
                             .name_case = NameCase::Upper,
                             .default_row = " values (default)",
                             .longest_list = 512};
const Dialect common_dialect{.engine = "", .functions = common_functions};

std::string in_dialect(std::string_view sql, const Dialect& dialect) {
  std::string result;
  result.reserve(sql.size() + 16);
  std::size_t copied = 0;
  Place place;
  Tokens tokens(sql);
  Token name;  // a word that may turn out to be a function's name
  bool qualified = false;
  for (Token token = tokens.next(); token.kind != TokenKind::End; token = tokens.next()) {
    if (token.kind == TokenKind::Open && name.kind == TokenKind::Word) {
      if (const FunctionName* function = function_named(name.text, dialect, place.inside())) {
        const std::size_t begin = tokens.position(name);
        result.append(sql, copied, begin - copied).append(function->engine_name);
        copied = begin + name.text.size();
      }
    }
    place.read(token);
    name = qualified ? Token{} : token;
    qualified = token.kind == TokenKind::Operator && token.text == ".";
  }
  result.append(sql, copied);
  return dialect.reads_unions_whole ? with_exists(result) : result;
}

std::string name_in_statement(std::string_view name, const Dialect& dialect) {
  if (is_plain_name(name, dialect.name_case)) return std::string(name);
  return concat("\"", replace_all(name, "\"", "\"\""), "\"");
}

}  // namespace pradelis::dataaccess
