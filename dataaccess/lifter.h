#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dataaccess/cell.h"
#include "dataaccess/dialect.h"
#include "dataaccess/literals.h"
#include "dataaccess/statement_shapes.h"
#include "dataaccess/tokens.h"

namespace pradelis::dataaccess {

/// Takes the literals out of a statement, so that texts that differ only in them share one prepared
/// statement. Keeps its memory from one statement to the next.
///
/// Literals stay where a value would change the meaning: in select lists and all that is nested in
/// them (they name the column), sort and group keys, limits, arguments of types, typed and prefixed
/// literals, beside another literal ("1=1"), and in statements other than queries and row changes.
/// The values of an `in ( … )` list of literals are padded, by repeating the last, to few lengths.
class Lifter {
 public:
  /// Raises -2147217900 for a statement with an empty `in ()` list, a parameter marker of its own, a NUL
  /// or bytes that are no UTF-8. One lifter always gets the same dialect.
  void lift(std::string_view sql, const Dialect& dialect);

  /// The statement with "?" for the literals taken out. Stays until the next `lift`.
  const StatementText& text() const noexcept { return text_; }
  /// The values taken out, in order. They point into the statement given to `lift`, or into this object
  /// until the next `lift`.
  std::span<const Cell> values() const noexcept { return literals_.values(); }

 private:
  // What an open parenthesis, or the whole statement, stands for.
  struct Level {
    bool fixed = false;      // literals stay
    bool inherited = false;  // ... as those around the parenthesis do
    bool select_list = false;
    bool empty = true;     // no token yet
    bool in_list = false;  // the list of an `in`
    bool only_literals = false;
    bool converts = false;     // its first word names a type
    std::size_t values = 0;    // number of values taken out before it
    std::size_t out_size = 0;  // size of out_ at its beginning
    std::size_t source = 0;    // position after its parenthesis
  };
  enum class Before : std::uint8_t { Operand, Literal, Operator, LiteralOperator };

  bool starts_liftable(std::string_view sql);
  void read_token(const Token& token, std::size_t position);
  void read_word(const Token& token);
  void read_clause(std::uint64_t word);
  void read_operator(const Token& token, std::size_t position);
  void read_literal(const Token& token, std::size_t position);
  void open(std::size_t position);
  void close(std::size_t position);
  void pad_list(Level& list, std::size_t position);
  bool take_value(const Token& token, std::size_t begin);
  void put_back();
  void take_apart();
  void keep_literals();

  std::string_view sql_;
  const Dialect* dialect_ = nullptr;
  StatementText text_;
  std::string out_;
  std::size_t copied_ = 0;  // position up to which the statement stands in out_
  Literals literals_;
  StatementShapes shapes_;
  std::vector<StatementShape::Gap> gaps_;
  bool has_list_ = false;  // whose length decides the text
  std::vector<Level> levels_;

  std::uint64_t first_word_ = 0;
  Before before_ = Before::Operator;
  std::uint64_t word_ = 0;  // the last token, if it is a short word
  bool word_names_type_ = false;
  bool type_follows_ = false;
  std::size_t sign_ = npos;  // position of a sign that can belong to a number after it
  bool lifted_ = false;      // the last literal was taken out: from here in the source, to there in out_
  std::size_t literal_source_ = 0;
  std::size_t literal_out_ = 0;

  static constexpr std::size_t npos = static_cast<std::size_t>(-1);
};

}  // namespace pradelis::dataaccess
