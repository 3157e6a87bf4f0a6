#include "site/form.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "component/crm.h"
#include "site/format.h"
#include "site/identifiers.h"
#include "site/typed_values.h"
#include "values/convert.h"

namespace pradelis::site {
namespace {

constexpr const char* guard_field = "_versao";
constexpr const char* changed_meanwhile_text =
    "Outra pessoa mudou este registro enquanto você escrevia. O que você escreveu continua aqui, e ao lado está"
    " o que ficou gravado. Salve de novo para deixar o que você escreveu.";

constexpr const char* other_than_shown_text =
    "Isto mudou enquanto você olhava. Confira de novo o que está na página antes de confirmar.";

/// A digest (FNV-1a) in hexadecimal digits: tells states apart, keeps no secret.
std::string digest(std::string_view state) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char c : state) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  std::string digits;
  for (int shift = 60; shift >= 0; shift -= 4) digits += "0123456789abcdef"[(hash >> shift) & 15U];
  return digits;
}

}  // namespace

Field& Form::add(Field::Kind kind, std::string name, std::string label, std::vector<Option> options) {
  return fields_.emplace_back(kind, std::move(name), std::move(label), std::move(options));
}
Field& Form::text(std::string name, std::string label) {
  return add(Field::Kind::Text, std::move(name), std::move(label));
}
Field& Form::area(std::string name, std::string label) {
  return add(Field::Kind::Area, std::move(name), std::move(label));
}
Field& Form::password(std::string name, std::string label) {
  return add(Field::Kind::Password, std::move(name), std::move(label));
}
Field& Form::date(std::string name, std::string label) {
  return add(Field::Kind::Date, std::move(name), std::move(label));
}
Field& Form::money(std::string name, std::string label) {
  return add(Field::Kind::Money, std::move(name), std::move(label)).keyboard("decimal");
}
Field& Form::choice(std::string name, std::string label, std::vector<Option> options) {
  return add(Field::Kind::Choice, std::move(name), std::move(label), std::move(options));
}
Field& Form::checks(std::string name, std::string label, std::vector<Option> options) {
  return add(Field::Kind::Checks, std::move(name), std::move(label), std::move(options));
}

Field& Form::file(std::string name, std::string label) {
  return add(Field::Kind::File, std::move(name), std::move(label)).required();
}

bool Form::has(std::string_view name) const {
  return std::any_of(fields_.begin(), fields_.end(), [&](const Field& field) { return field.name_ == name; });
}

Form& Form::guard() {
  shows_record_ = true;
  std::string state;
  for (Field& field : fields_) {
    field.stored_ = Field::Stored{field.values_, field.readable()};
    state += field.name_ + '\0';
    for (const std::string& value : field.values_) state += value + '\0';
    state += '\0';
  }
  return guard(state);
}

Form& Form::guard(std::string_view state) {
  guard_ = digest(state);
  return *this;
}

bool Form::is_current(const Form& present) {
  if (guard_ == present.guard_) {
    // What was chosen may have gone since it was offered.
    for (Field& field : fields_) {
      if (!present.has(field.name_)) continue;
      field.options_ = present.field(field.name_).options_;
      field.check();
    }
    return !refused();
  }
  guard_ = present.guard_;
  for (Field& field : fields_) {
    if (present.has(field.name_)) field.stored_ = present.field(field.name_).stored_;
  }
  refuse_as_changed();
  return false;
}

void Form::refuse_as_changed() {
  changed_meanwhile_ = true;
  refuse(shows_record_ ? changed_meanwhile_text : other_than_shown_text);
}

bool Form::read(const Parameters& typed) {
  for (Field& field : fields_) {
    field.take(typed);
    field.check();
  }
  if (!guard_.empty() && typed.get(guard_field) != guard_) refuse_as_changed();
  return !refused();
}

void Form::refuse(std::string_view name, std::string message) { field(name).error_ = std::move(message); }
void Form::refuse(std::string message) { error_ = std::move(message); }

bool Form::refused() const {
  return !error_.empty() || std::any_of(fields_.begin(), fields_.end(),
                                        [](const Field& field) { return !field.error_.empty(); });
}

std::string Form::reasons() const {
  std::string reasons = error_;
  for (const Field& field : fields_) {
    if (!field.error_.empty()) reasons += (reasons.empty() ? "" : " ") + field.label_ + ": " + field.error_;
  }
  return reasons;
}

const Field& Form::field(std::string_view name) const {
  const auto found =
      std::find_if(fields_.begin(), fields_.end(), [&](const Field& field) { return field.name_ == name; });
  if (found == fields_.end()) throw std::logic_error("no field " + std::string(name));
  return *found;
}
Field& Form::field(std::string_view name) { return const_cast<Field&>(std::as_const(*this).field(name)); }

const std::string& Form::text_of(std::string_view name) const { return field(name).text(); }

std::int32_t Form::id_of(std::string_view name) const { return parse_identifier(text_of(name)).value_or(0); }

std::vector<std::int32_t> Form::ids_of(std::string_view name) const {
  std::vector<std::int32_t> ids;
  for (const std::string& text : field(name).values_) {
    if (const auto id = parse_identifier(text)) ids.push_back(*id);
  }
  return ids;
}

std::optional<Date> Form::date_of(std::string_view name) const { return parse_day(text_of(name)); }

std::string Form::date_text_of(std::string_view name) const {
  const auto date = date_of(name);
  return date ? day_text(*date) : std::string();
}

double Form::money_of(std::string_view name, component::CRM& crm) const {
  Variant typed = text_of(name).empty() ? Variant::null() : Variant(text_of(name));
  return to_double(crm.FormataNumero(typed));
}

View Form::view() const {
  View view;
  std::vector<View> fields;
  std::vector<View> errors;
  for (const Field& field : fields_) {
    fields.push_back(field.view(!field.error_.empty() && errors.empty(), changed_meanwhile_));
    if (field.error_.empty()) continue;
    errors.push_back(View().set("name", field.name_).set("label", field.label_).set("error", field.error_));
  }
  view.flag("has_file", std::any_of(fields_.begin(), fields_.end(),
                                    [](const Field& field) { return field.kind_ == Field::Kind::File; }));
  view.flag("any_fields", !fields.empty())
      .flag("guarded", !guard_.empty())
      .set("guard", guard_)
      .set("guard_field", guard_field);
  view.flag("refused", refused()).optional("error", error_).flag("has_errors", !errors.empty());
  return view.list("fields", std::move(fields)).list("errors", std::move(errors));
}

View Form::view_of(std::string_view name) const {
  return field(name).view(!field(name).error_.empty(), changed_meanwhile_);
}

}  // namespace pradelis::site
