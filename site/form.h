#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "site/parameters.h"
#include "site/view.h"
#include "values/date.h"

namespace pradelis::component {
class CRM;
}

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
  View view(bool focused) const;
  const std::string& text() const;
  bool blank() const;

  Kind kind_;
  std::string name_, label_, hint_, autocomplete_ = "off", keyboard_, suggestions_, error_;
  std::vector<Option> options_;
  std::vector<std::string> values_;  // as typed; several for checks
  std::size_t limit_;
  bool required_ = false, literal_ = false, half_ = false;
};

/// A form: its fields, what was typed into them, and what is wrong with that. What was typed is kept
/// as it is, so that nobody types it twice.
class Form {
 public:
  Field& text(std::string name, std::string label);
  Field& area(std::string name, std::string label);
  Field& password(std::string name, std::string label);
  Field& date(std::string name, std::string label);
  Field& money(std::string name, std::string label);
  /// One of `options`; others are refused, so options double as permission.
  Field& choice(std::string name, std::string label, std::vector<Option> options);
  /// Any number of `options`.
  Field& checks(std::string name, std::string label, std::vector<Option> options);

  /// A file; the page takes it from the request's uploads and says what is wrong with it.
  Field& file(std::string name, std::string label);

  bool has(std::string_view field) const;

  /// What a field shows before anything was typed.
  template <class Value>
  Form& fill(std::string_view name, Value&& value) {
    field(name).value(std::forward<Value>(value));
    return *this;
  }

  /// Takes what was typed, and checks it. True when nothing is wrong.
  bool read(const Parameters& typed);

  /// Says what is wrong with a field, or with the whole.
  void refuse(std::string_view field, std::string message);
  void refuse(std::string message);
  bool refused() const;

  // What was typed, once `read` has found it right.

  /// Without the blanks around it (passwords: as it is).
  const std::string& text_of(std::string_view field) const;
  /// The chosen identifier; 0 for none.
  std::int32_t id_of(std::string_view field) const;
  std::vector<std::int32_t> ids_of(std::string_view field) const;
  std::optional<Date> date_of(std::string_view field) const;
  /// dd/mm/aaaa; empty for none.
  std::string date_text_of(std::string_view field) const;
  /// As the component reads typed numbers; 0 for none.
  double money_of(std::string_view field, component::CRM& crm) const;

  /// For the template parts "_form" and "_field".
  View view() const;
  /// One field, for "_field".
  View view_of(std::string_view field) const;

 private:
  Field& add(Field::Kind kind, std::string name, std::string label, std::vector<Option> options = {});
  Field& field(std::string_view name);
  const Field& field(std::string_view name) const;

  std::deque<Field> fields_;
  std::string error_;
};

}  // namespace pradelis::site
