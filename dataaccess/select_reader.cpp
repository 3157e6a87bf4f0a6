#include "dataaccess/select_reader.h"

#include "dataaccess/tokens.h"
#include "values/text.h"

namespace pradelis::dataaccess {
namespace {

bool is_name(const Token& token) noexcept {
  return token.kind == TokenKind::Word || token.kind == TokenKind::QuotedName;
}

bool is_word(const Token& token, std::string_view word) noexcept {
  return token.kind == TokenKind::Word && equal_ignoring_case(token.text, word);
}

bool is_point(const Token& token) noexcept { return token.kind == TokenKind::Operator && token.text == "."; }

// Words that can follow the table of a query of one table.
bool ends_table(std::uint64_t word) noexcept {
  switch (word) {
    case keyword("where"):
    case keyword("order"):
    case keyword("limit"):
    case keyword("offset"):
    case keyword("fetch"):
    case keyword("for"):
      return true;
    default:
      return false;
  }
}

// Words after which rows are no longer the table's own, or that bring in another table.
bool combines(const Token& token) noexcept {
  switch (keyword(token.text)) {
    case keyword("group"):
    case keyword("having"):
    case keyword("union"):
    case keyword("except"):
    case keyword("minus"):
    case keyword("join"):
    case keyword("left"):
    case keyword("right"):
    case keyword("inner"):
    case keyword("outer"):
    case keyword("cross"):
    case keyword("natural"):
    case keyword("full"):
    case keyword("into"):
    case keyword("with"):
      return true;
    default:
      return equal_ignoring_case(token.text, "intersect");
  }
}

class Reader {
 public:
  explicit Reader(std::string_view sql) : tokens_(sql) { advance(); }

  std::optional<TableSelect> read() {
    TableSelect select;
    if (!is_word(token_, "select")) return {};
    do {
      advance();
      if (!read_column(select)) return {};
    } while (token_.kind == TokenKind::Comma);
    if (!is_word(token_, "from")) return {};
    select.from = tokens_.position(token_);
    advance();
    if (!read_table(select) || !rest_is_plain()) return {};
    return select;
  }

  bool is_only_a_name() {
    TableSelect select;
    return read_name(select.table, select.qualifier) && token_.kind == TokenKind::End;
  }

 private:
  void advance() { token_ = tokens_.next(); }

  // "*", "t.*", "c", "t.c", each but the stars with "as name" or "name" after it.
  bool read_column(TableSelect& select) {
    SelectedColumn selected;
    if (token_.kind == TokenKind::Operator && token_.text == "*") {
      selected.all = true;
      advance();
    } else {
      if (!is_name(token_) || is_word(token_, "distinct") || is_word(token_, "top")) return false;
      selected.column = token_.text;
      advance();
      while (is_point(token_)) {
        advance();
        if (!is_name(token_)) return false;
        selected.column = token_.text;
        advance();
      }
      if (token_.kind == TokenKind::Operator && token_.text == ".*") {
        selected = {.all = true, .column = {}};
        advance();
      } else if (!skip_alias()) {
        return false;
      }
    }
    select.columns.push_back(std::move(selected));
    return true;
  }

  bool skip_alias() {
    const bool announced = is_word(token_, "as");
    if (announced) advance();
    if (is_name(token_) && (announced || !is_word(token_, "from"))) {
      advance();
      return true;
    }
    return !announced;
  }

  bool read_table(TableSelect& select) {
    if (!read_name(select.table, select.qualifier)) return false;
    const bool announced = is_word(token_, "as");
    if (announced) advance();
    if (is_name(token_) && (announced || !(ends_table(keyword(token_.text)) || combines(token_)))) {
      select.qualifier = token_.text;
      advance();
    }
    return token_.kind == TokenKind::End || token_.kind == TokenKind::Semicolon ||
           (token_.kind == TokenKind::Word && ends_table(keyword(token_.text)));
  }

  bool read_name(std::string& name, std::string& last_part) {
    if (!is_name(token_)) return false;
    const char* begin = token_.text.data();
    std::string_view part = token_.text;
    advance();
    while (is_point(token_)) {
      advance();
      if (!is_name(token_)) return false;
      part = token_.text;
      advance();
    }
    name.assign(begin, part.data() + part.size());
    last_part = part;
    return true;
  }

  bool rest_is_plain() {
    int depth = 0;
    for (; token_.kind != TokenKind::End; advance()) {
      if (token_.kind == TokenKind::Open) ++depth;
      if (token_.kind == TokenKind::Close) --depth;
      if (depth == 0 && token_.kind == TokenKind::Word && combines(token_)) return false;
      if (token_.kind == TokenKind::Unended) return false;
    }
    return true;
  }

  Tokens tokens_;
  Token token_;
};

}  // namespace

std::optional<TableSelect> read_table_select(std::string_view sql) { return Reader(sql).read(); }

bool is_table_name(std::string_view name) { return Reader(name).is_only_a_name(); }

}  // namespace pradelis::dataaccess
