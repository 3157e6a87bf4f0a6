#pragma once

#include <map>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace pradelis::site {

/// What a template is filled with: texts, switches and lists of further views, by name.
class View {
 public:
  using Value = std::variant<std::string, bool, std::vector<View>>;

  View& set(const std::string& name, std::string text) {
    values_[name] = std::move(text);
    return *this;
  }
  /// As `set`; an empty text counts as a switch that is off.
  View& optional(const std::string& name, std::string text) {
    return text.empty() ? flag(name, false) : set(name, std::move(text));
  }
  /// A section of this name shows when `on`.
  View& flag(const std::string& name, bool on = true) {
    values_[name] = on;
    return *this;
  }
  /// A section of this name shows once for each view.
  View& list(const std::string& name, std::vector<View> views) {
    values_[name] = std::move(views);
    return *this;
  }
  /// A section of this name shows once, with what `view` holds at hand.
  View& section(const std::string& name, View view) {
    std::vector<View> views;
    views.push_back(std::move(view));
    return list(name, std::move(views));
  }

  const std::map<std::string, Value>& values() const { return values_; }

 private:
  std::map<std::string, Value> values_;
};

}  // namespace pradelis::site
