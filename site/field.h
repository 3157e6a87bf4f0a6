#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "site/parameters.h"
#include "site/view.h"
#include "values/date.h"

namespace pradelis::site {

/// One of the values that a choice offers.
struct Option {
  std::int32_t id = 0;
  std::string label;
};

/// Keeps what a record names already among the options, also when it is no longer offered. Nothing for 0.
void keep_option(std::vector<Option>& options, std::int32_t id, const std::string& label);

/// One question of a form. The setters give the field back, so that they can be chained.
class Field {
 public:
  enum class Kind { Text, Area, Password, Date, Money, Choice, Checks, File };

  Field(Kind kind, std::string name, std::string label, std::vector<Option> options = {});

  /// Must not be left empty.
  Field& required();
  /// At most so many characters (texts have 120, areas 4000, when nothing is said).
  Field& limit(std::size_t characters);
  /// Goes into a statement as it is: texts that could end a literal are refused.
  Field& literal();
  /// The component writes it into pages as it is stored: it is stored as HTML text (see component_text.h),
  /// for which there has to be room.
  Field& shown_by_component();
  /// A line of help under the field.
  Field& hint(std::string text);
  /// What browsers may fill in, by the name that HTML has for it ("username", "off", ...).
  Field& autocomplete(std::string name);
  /// Keyboard that phones show ("numeric", ...).
  Field& keyboard(std::string name);
  /// Where a script finds suggestions while one types.
  Field& suggestions(std::string address);
  /// Takes half of the form's width where there is room.
  Field& half();
  /// What the field shows before anything was typed.
  Field& value(std::string text);
  Field& value(std::int32_t id);
  Field& value(const std::vector<std::int32_t>& ids);
  Field& value(Date date);
  Field& money(double amount);

 private:
  friend class Form;

  void take(const Parameters& typed);
  void check();
  void check_one(const std::string& text);
  View view(bool focused, bool changed_meanwhile) const;
  const std::string& text() const;
  bool blank() const;
  /// What the field holds, as one reads it.
  std::string readable() const;
  bool holds_what_is_stored() const;

  /// What is stored of the field, when somebody else may change it meanwhile.
  struct Stored {
    std::vector<std::string> values;
    std::string readable;
  };

  Kind kind_;
  std::string name_, label_, hint_, autocomplete_ = "off", keyboard_, suggestions_, error_;
  std::vector<Option> options_;
  std::vector<std::string> values_;  // as typed; several for checks
  std::optional<Stored> stored_;
  std::size_t limit_;
  bool required_ = false, literal_ = false, half_ = false, shown_by_component_ = false;
};

}  // namespace pradelis::site
