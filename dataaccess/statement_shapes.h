#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dataaccess/literals.h"

namespace pradelis::dataaccess {

/// The text of a lifted statement with its hash, worked out once.
struct StatementText {
  std::string_view text;
  std::size_t hash = 0;

  static StatementText of(std::string_view text) noexcept {
    return {text, std::hash<std::string_view>{}(text)};
  }
  friend bool operator==(const StatementText& left, const StatementText& right) noexcept {
    return left.text == right.text;
  }
};

struct HashOfStatementText {
  std::size_t operator()(const StatementText& text) const noexcept { return text.hash; }
};

/// A statement once taken apart: where its literals stand and what is left without them.
struct StatementShape {
  struct Gap {
    std::size_t begin = 0;  ///< of a literal, in bytes
    std::size_t end = 0;
  };
  std::string source;
  std::vector<Gap> gaps;
  std::string text;
  std::size_t hash = 0;  ///< of `text`
};

/// Recognises a statement that differs only in its literals from one taken apart before: comparing the
/// text between them is some ten times faster than reading its words again.
class StatementShapes {
 public:
  /// The shape of `sql`, and the values of its literals; null when it is not known.
  const StatementShape* match(std::string_view sql, Literals& literals);
  /// Keeps a shape, unless other literals could be read differently in its place.
  void remember(StatementShape shape);

 private:
  void note_recent(const StatementShape* shape) noexcept;

  std::array<const StatementShape*, 8> recent_{};  // the last matched first: work repeats few statements
  std::unordered_multimap<std::size_t, StatementShape> shapes_;  // by the hash of their beginning
};

}  // namespace pradelis::dataaccess
