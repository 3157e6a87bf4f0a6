#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "site/field.h"
#include "site/parameters.h"
#include "site/view.h"
#include "values/date.h"

namespace pradelis::component {
class CRM;
}

namespace pradelis::site {

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

  /// Guards a record against a second writer: what the fields hold now is what is stored. The form carries a
  /// digest of it; when it comes back with another one, somebody has changed the record meanwhile, and `read`
  /// refuses it: what was typed stays, what is stored now shows beside the fields that differ, and saving
  /// once more keeps what was typed.
  Form& guard();
  /// As above for a record of which the form shows nothing: `state` is what must not have changed.
  Form& guard(std::string_view state);
  /// Compares with a form that was filled and guarded anew. False, as from `read`, when they differ.
  bool is_current(const Form& present);

  /// Takes what was typed, and checks it. True when nothing is wrong.
  bool read(const Parameters& typed);

  /// Says what is wrong with a field, or with the whole.
  void refuse(std::string_view field, std::string message);
  void refuse(std::string message);
  bool refused() const;
  /// What is wrong, in one line; empty when nothing is.
  std::string reasons() const;

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

  void refuse_as_changed();

  std::deque<Field> fields_;
  std::string error_;
  std::string guard_;          // digest of what is stored; empty when nothing is guarded
  bool shows_record_ = false;  // what is guarded is what the fields show
  bool changed_meanwhile_ = false;
};

}  // namespace pradelis::site
