#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pradelis::site {

/// Names and values of a query or of a posted form, in the order in which they came.
class Parameters {
 public:
  /// Takes "a=1&b=x%20y" apart. Broken percent signs stand for themselves.
  static Parameters parse(std::string_view encoded);

  void add(std::string name, std::string value) { values_.emplace_back(std::move(name), std::move(value)); }

  /// The first value of this name, or the empty text.
  const std::string& get(std::string_view name) const;
  /// All values of this name.
  std::vector<std::string> all(std::string_view name) const;
  const std::vector<std::pair<std::string, std::string>>& values() const { return values_; }
  /// The query that these parameters came from, without those of the given names, and without empty ones.
  std::string encode_without(std::initializer_list<std::string_view> names) const;
  /// Whether every name and value is well-formed UTF-8 without control characters other than line
  /// breaks and tabs.
  bool well_formed() const;

 private:
  std::vector<std::pair<std::string, std::string>> values_;
};

/// `text` as it may stand in a query or a path segment.
std::string url_encode(std::string_view text);
/// What `text` stands for: percent signs taken apart, and "+" as a blank when `form`.
std::string url_decode(std::string_view text, bool form);

}  // namespace pradelis::site
