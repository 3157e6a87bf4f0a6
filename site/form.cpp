#include "site/form.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "component/crm.h"
#include "site/format.h"
#include "site/identifiers.h"
#include "site/typed_values.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr double largest_amount = 99'999'999'999'999.0;

std::size_t character_count(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

bool is_amount(const std::string& text) {
  if (text.find_first_not_of("0123456789.,R$ ") != std::string::npos) return false;
  const auto amount = parse_number(text);
  return amount && *amount <= largest_amount;
}

bool is_option(const std::vector<Option>& options, std::string_view text) {
  const auto id = parse_identifier(text);
  return id && std::any_of(options.begin(), options.end(), [&](const Option& o) { return o.id == *id; });
}

}  // namespace

void keep_option(std::vector<Option>& options, std::int32_t id, const std::string& label) {
  if (id == 0) return;
  const bool offered =
      std::any_of(options.begin(), options.end(), [&](const Option& option) { return option.id == id; });
  if (!offered) options.push_back({id, label});
}

Field::Field(Kind kind, std::string name, std::string label, std::vector<Option> options)
    : kind_(kind),
      name_(std::move(name)),
      label_(std::move(label)),
      options_(std::move(options)),
      limit_(kind == Kind::Area ? 4000 : 120) {}

Field& Field::required() {
  required_ = true;
  return *this;
}
Field& Field::limit(std::size_t characters) {
  limit_ = characters;
  return *this;
}
Field& Field::literal() {
  literal_ = true;
  return *this;
}
Field& Field::hint(std::string text) {
  hint_ = std::move(text);
  return *this;
}
Field& Field::autocomplete(std::string name) {
  autocomplete_ = std::move(name);
  return *this;
}
Field& Field::keyboard(std::string name) {
  keyboard_ = std::move(name);
  return *this;
}
Field& Field::suggestions(std::string address) {
  suggestions_ = std::move(address);
  return *this;
}
Field& Field::half() {
  half_ = true;
  return *this;
}
Field& Field::value(std::string text) {
  values_ = {std::move(text)};
  return *this;
}
Field& Field::value(std::int32_t id) { return value(id == 0 ? std::string() : std::to_string(id)); }
Field& Field::value(const std::vector<std::int32_t>& ids) {
  values_.clear();
  for (const std::int32_t id : ids) values_.push_back(std::to_string(id));
  return *this;
}
Field& Field::value(Date date) { return value(iso_day(date)); }
Field& Field::money(double amount) { return value(amount_text(amount)); }

const std::string& Field::text() const {
  static const std::string none;
  return values_.empty() ? none : values_.front();
}

bool Field::blank() const {
  return std::all_of(values_.begin(), values_.end(), [](const std::string& text) { return text.empty(); });
}

void Field::take(const Parameters& typed) {
  values_ = typed.all(name_);
  if (kind_ != Kind::Checks) values_.resize(1);
  if (kind_ == Kind::Password) return;
  for (std::string& text : values_) text = std::string(trim(text));
}

void Field::check() {
  error_.clear();
  if (kind_ == Kind::File) return;
  if (blank()) {
    if (required_) error_ = kind_ == Kind::Choice ? "Escolha uma opção." : "Preencha este campo.";
    return;
  }
  for (const std::string& text : values_) {
    if (error_.empty()) check_one(text);
  }
}

void Field::check_one(const std::string& text) {
  switch (kind_) {
    case Kind::Choice:
    case Kind::Checks:
      if (!is_option(options_, text)) error_ = "Escolha uma das opções oferecidas.";
      return;
    case Kind::Date:
      if (!parse_day(text)) error_ = "Data inválida. Escreva como 31/12/2026.";
      return;
    case Kind::Money:
      if (!is_amount(text)) error_ = "Valor inválido. Escreva como 1.234,56.";
      return;
    case Kind::Text:
    case Kind::Password:
      if (text.find_first_of("\r\n\t") != std::string::npos) error_ = "Escreva em uma só linha.";
      break;
    case Kind::Area:
    case Kind::File:
      break;
  }
  if (character_count(text) > limit_) {
    error_ = "Use no máximo " + std::to_string(limit_) + " caracteres.";
  } else if (literal_ && could_end_literal(text)) {
    error_ = "Não use aspas simples (') nem barra invertida (\\) aqui.";
  }
}

View Field::view(bool focused) const {
  View view;
  view.set("name", name_).set("label", label_).set("value", text()).set("autocomplete", autocomplete_);
  view.set("limit", std::to_string(limit_)).flag("required", required_).flag("half", half_);
  view.flag("focused", focused).flag("optional", !required_ && kind_ != Kind::Checks);
  view.flag("is_text", kind_ == Kind::Text).flag("is_area", kind_ == Kind::Area);
  view.flag("is_password", kind_ == Kind::Password).flag("is_date", kind_ == Kind::Date);
  view.flag("is_money", kind_ == Kind::Money).flag("is_choice", kind_ == Kind::Choice);
  view.flag("is_file", kind_ == Kind::File)
      .flag("is_checks", kind_ == Kind::Checks)
      .flag("described", !hint_.empty() || !error_.empty());
  view.optional("keyboard", keyboard_).optional("suggestions", suggestions_).optional("hint", hint_);
  view.optional("invalid", error_).set("blank", required_ ? "Escolha…" : "—");
  std::vector<View> options;
  for (const Option& option : options_) {
    const std::string id = std::to_string(option.id);
    const bool chosen = std::find(values_.begin(), values_.end(), id) != values_.end();
    options.push_back(View().set("id", id).set("option", option.label).flag("chosen", chosen));
  }
  return view.list("options", std::move(options));
}

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

bool Form::read(const Parameters& typed) {
  for (Field& field : fields_) {
    field.take(typed);
    field.check();
  }
  return !refused();
}

void Form::refuse(std::string_view name, std::string message) { field(name).error_ = std::move(message); }
void Form::refuse(std::string message) { error_ = std::move(message); }

bool Form::refused() const {
  return !error_.empty() || std::any_of(fields_.begin(), fields_.end(),
                                        [](const Field& field) { return !field.error_.empty(); });
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
    fields.push_back(field.view(!field.error_.empty() && errors.empty()));
    if (field.error_.empty()) continue;
    errors.push_back(View().set("name", field.name_).set("label", field.label_).set("error", field.error_));
  }
  view.flag("has_file", std::any_of(fields_.begin(), fields_.end(),
                                    [](const Field& field) { return field.kind_ == Field::Kind::File; }));
  view.flag("refused", refused()).optional("error", error_).flag("has_errors", !errors.empty());
  return view.list("fields", std::move(fields)).list("errors", std::move(errors));
}

View Form::view_of(std::string_view name) const { return field(name).view(!field(name).error_.empty()); }

}  // namespace pradelis::site
