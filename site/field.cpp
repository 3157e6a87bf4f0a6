#include "site/field.h"

#include <algorithm>
#include <utility>

#include "site/component_text.h"
#include "site/format.h"
#include "site/identifiers.h"
#include "site/typed_values.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

constexpr double largest_amount = 99'999'999'999'999.0;
/// Bytes that names have in the database.
constexpr std::size_t longest_stored = 255;

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
Field& Field::shown_by_component() {
  shown_by_component_ = true;
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

std::string Field::readable() const {
  if (kind_ == Kind::Date) {
    const auto day = parse_day(text());
    return day ? day_text(*day) : std::string();
  }
  if (kind_ != Kind::Choice && kind_ != Kind::Checks) return text();
  std::string labels;
  for (const Option& option : options_) {
    const bool chosen = std::find(values_.begin(), values_.end(), std::to_string(option.id)) != values_.end();
    if (chosen) labels += (labels.empty() ? "" : ", ") + option.label;
  }
  return labels;
}

bool Field::holds_what_is_stored() const {
  if (kind_ == Kind::Checks) {
    auto now = values_;
    auto before = stored_->values;
    std::sort(now.begin(), now.end());
    std::sort(before.begin(), before.end());
    return now == before;
  }
  const std::string before = stored_->values.empty() ? std::string() : stored_->values.front();
  if (kind_ == Kind::Date) return parse_day(text()) == parse_day(before);
  if (kind_ == Kind::Money) return parse_number(text()) == parse_number(before);
  return replace_all(text(), "\r", "") == replace_all(trim(before), "\r", "");
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
  } else if (shown_by_component_ && to_component_text(text).size() > longest_stored) {
    error_ = "O texto é longo demais.";
  }
}

View Field::view(bool focused, bool changed_meanwhile) const {
  View view;
  const bool differs = changed_meanwhile && stored_ && !holds_what_is_stored();
  view.set("name", name_).set("label", label_).set("value", text()).set("autocomplete", autocomplete_);
  view.set("limit", std::to_string(limit_)).flag("required", required_).flag("half", half_);
  view.flag("focused", focused).flag("optional", !required_ && kind_ != Kind::Checks);
  view.flag("is_text", kind_ == Kind::Text).flag("is_area", kind_ == Kind::Area);
  view.flag("is_password", kind_ == Kind::Password).flag("is_date", kind_ == Kind::Date);
  view.flag("is_money", kind_ == Kind::Money).flag("is_choice", kind_ == Kind::Choice);
  view.flag("is_file", kind_ == Kind::File)
      .flag("is_checks", kind_ == Kind::Checks)
      .flag("described", !hint_.empty() || !error_.empty() || differs);
  view.flag("differs", differs).set("stored", differs ? stored_->readable : std::string());
  view.flag("stored_blank", differs && stored_->readable.empty());
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

}  // namespace pradelis::site
