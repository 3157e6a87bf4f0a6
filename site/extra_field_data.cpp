#include "site/extra_field_data.h"

#include <algorithm>

#include "dataaccess/schema/fixed.h"
#include "site/component_html.h"
#include "site/component_text.h"
#include "site/identifiers.h"
#include "site/rows.h"
#include "site/transaction.h"
#include "site/typed_values.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

constexpr std::int32_t shown = 1;
constexpr std::size_t longest_text = 2000;
constexpr std::size_t longest_number = 40;
constexpr const char* before_prefix = "ANTES";
constexpr std::string_view row_begin = "<tr>\r\n";
constexpr std::string_view row_end = "</tr>\r\n";
constexpr std::string_view table_begin = "<table cellpadding=0 border=0 cellspacing=0>";

/// The number that follows `marker`; 0 when there is none.
std::int32_t number_after(std::string_view html, std::string_view marker) {
  const std::size_t at = html.find(marker);
  if (at == std::string_view::npos) return 0;
  const std::string_view rest = html.substr(at + marker.size());
  return parse_identifier(rest.substr(0, rest.find('"'))).value_or(0);
}

/// The component writes rows as the database returns them; they are put into the order of `fields`.
std::string in_order(const std::string& html, const std::vector<ExtraField>& fields) {
  std::map<std::int32_t, std::string> rows;
  const std::size_t begin = std::min(html.find(row_begin), html.size());
  std::size_t at = begin;
  while (html.compare(at, row_begin.size(), row_begin) == 0) {
    const std::size_t end = std::min(html.find(row_end, at), html.size());
    const std::string row = html.substr(at, end + row_end.size() - at);
    rows[number_after(row, "value = \"")] += row;
    at = std::min(end + row_end.size(), html.size());
  }
  std::string ordered = html.substr(0, begin);
  for (const ExtraField& field : fields) ordered += rows[field.id];
  return ordered + html.substr(at);
}

bool blank_choice(const std::string& value) { return value.empty() || value == "0"; }

/// What a stored value looks like in its field.
std::string as_typed(component::CRM& crm, const ExtraField& field, std::int32_t company) {
  const std::string stored = crm.Aditivo_Ver(company, field.id);
  return field.type == FieldType::Text ? from_component_text(stored) : stored;
}

bool is_choice(Context& context, const ExtraField& field, const std::string& typed) {
  take_component_html();
  context.crm().Aditivo_Escrever(field.id, 1, false, "", "");
  return take_component_html().find("<option value=\"" + typed + "\"") != std::string::npos;
}

std::string changed_meanwhile(Context& context, const ExtraField& field, const std::string& present) {
  std::string readable = present;
  if (field.list != 0) {
    const std::int32_t chosen = parse_identifier(present).value_or(0);
    const std::string name = concat("select nome from item where oid = ", chosen);
    readable = from_component_text(plain_text(single_value(context.crm(), name)));
  }
  return "Outra pessoa mudou este campo enquanto isso; está gravado " +
         (readable.empty() ? "em branco" : "“" + readable + "”") +
         ". Para deixar o que você escreveu, salve de novo.";
}

/// What is to be stored, or why it is refused.
struct Checked {
  Variant value = Variant::null();
  std::string reason;
};

Checked check_choice(Context& context, const ExtraField& field, const std::string& typed) {
  // The statement that looks for the name needs a number; 0 names nothing.
  const std::int32_t chosen = parse_identifier(typed).value_or(0);
  if (chosen != 0 && !is_choice(context, field, typed)) return {{}, "Escolha uma das opções oferecidas."};
  if (field.type == FieldType::Reference) return {chosen, {}};
  return {chosen == 0 ? Variant::null() : Variant(typed), {}};
}

Checked check(Context& context, const ExtraField& field, const std::string& typed) {
  if (field.list != 0) return check_choice(context, field, typed);
  if (field.type == FieldType::Reference) return {{}, "Este campo não pode ser alterado aqui."};
  if (typed.empty()) return {};
  if (field.type == FieldType::Date) {
    const auto date = parse_day(typed);
    if (!date) return {{}, "Data inválida. Escreva como 31/12/2026."};
    return {*date, {}};
  }
  if (typed.find_first_of("\r\n\t") != std::string::npos) return {{}, "Escreva em uma só linha."};
  if (field.type == FieldType::Number) {
    const bool right = typed.find_first_not_of("0123456789.,-") == std::string::npos && parse_number(typed) &&
                       typed.size() <= longest_number;
    if (!right) return {{}, "Escreva um número, como 1.234,56."};
    return {typed, {}};
  }
  std::string stored = to_component_text(typed);
  if (stored.size() > longest_text) return {{}, "O texto é longo demais."};
  return {std::move(stored), {}};
}

}  // namespace

std::vector<ExtraField> read_extra_fields(component::CRM& crm, bool hidden) {
  std::vector<ExtraField> fields;
  each_row(crm,
           concat("select oid, valor, rtipo, rlista, visivel from dadoadicional where ritem = ",
                  fixed::class_company, hidden ? "" : " and visivel = 1", " order by isnull(ordem, 0), oid"),
           0, [&](const Row& row) {
             const std::int32_t type = row.id(2);
             const std::int32_t list = row.id(3);
             ExtraField field;
             field.id = row.id(0);
             field.label = from_component_text(row.text(1));
             field.type = type >= 1 && type <= 4 ? static_cast<FieldType>(type) : FieldType::Text;
             field.list = list == fixed::system_object ? 0 : list;
             field.visible = row.id(4) == shown;
             fields.push_back(std::move(field));
           });
  return fields;
}

std::string extra_field_rows(Context& context, const std::vector<ExtraField>& fields, std::int32_t company) {
  take_component_html();
  context.crm().Aditivo_Escrever_Item(fixed::class_company, shown, company);
  return in_order(take_component_html(), fields);
}

std::string extra_field_rows(Context& context, const std::vector<ExtraField>& fields,
                             const TypedFields& typed) {
  take_component_html();
  std::int32_t number = 0;
  for (const ExtraField& field : fields) {
    const auto found = typed.find(field.id);
    context.crm().Aditivo_Escrever(field.id, ++number, true,
                                   found == typed.end() ? std::string() : to_component_text(found->second));
  }
  return concat(table_begin, take_component_html(), "</table>\r\n",
                R"(<input type=hidden name="ADITIVO_TOTAL" value=)", number, ">\r\n");
}

TypedFields typed_extra_fields(const Parameters& posted, const std::vector<ExtraField>& fields) {
  TypedFields typed;
  const std::int32_t total = parse_identifier(posted.get("ADITIVO_TOTAL")).value_or(0);
  const auto rows = std::min(static_cast<std::size_t>(total), fields.size());
  for (std::size_t row = 1; row <= rows; ++row) {
    const std::string number = std::to_string(row);
    const std::int32_t id = parse_identifier(posted.get("ADITIVO_DEFINICAO" + number)).value_or(0);
    const bool offered =
        std::any_of(fields.begin(), fields.end(), [&](const ExtraField& field) { return field.id == id; });
    if (offered) typed[id] = std::string(trim(posted.get("ADITIVO_VALOR" + number)));
  }
  return typed;
}

TypedFields stored_extra_fields(Context& context, const std::vector<ExtraField>& fields,
                                std::int32_t company) {
  TypedFields stored;
  for (const ExtraField& field : fields) stored[field.id] = as_typed(context.crm(), field, company);
  return stored;
}

void add_extra_fields(View& view, std::string rows, const TypedFields& before) {
  std::vector<View> views;
  for (const auto& [id, value] : before) {
    views.push_back(View().set("field", before_prefix + std::to_string(id)).set("value", value));
  }
  view.set("rows", std::move(rows)).list("before", std::move(views));
}

TypedFields shown_extra_fields(const Parameters& posted, const std::vector<ExtraField>& fields) {
  TypedFields shown_before;
  for (const ExtraField& field : fields) {
    const auto values = posted.all(before_prefix + std::to_string(field.id));
    if (!values.empty()) shown_before[field.id] = values.front();
  }
  return shown_before;
}

namespace {

std::string state_of(const TypedFields& values) {
  std::string state;
  for (const auto& [field, value] : values) state += concat(field, "=", value, "\n");
  return state;
}

}  // namespace

bool store_extra_fields(Context& context, Form& form, const std::vector<ExtraField>& fields,
                        const TypedFields& typed, const TypedFields& before, std::int32_t company) {
  component::CRM& crm = context.crm();
  const TypedFields stored = stored_extra_fields(context, fields, company);
  std::vector<std::pair<std::int32_t, Variant>> changes;
  std::string reasons;
  for (const ExtraField& field : fields) {
    const auto found = typed.find(field.id);
    if (found == typed.end()) continue;
    const std::string& present = stored.at(field.id);
    const auto shown_before = before.find(field.id);
    const std::string& shown = shown_before == before.end() ? present : shown_before->second;
    const auto same = [&](const std::string& one, const std::string& other) {
      return one == other || (field.list != 0 && blank_choice(one) && blank_choice(other));
    };
    if (same(found->second, shown) || same(found->second, present)) continue;
    Checked checked = check(context, field, found->second);
    if (!same(shown, present)) checked.reason = changed_meanwhile(context, field, present);
    if (checked.reason.empty()) {
      changes.emplace_back(field.id, std::move(checked.value));
    } else {
      reasons += (reasons.empty() ? "" : " ") + field.label + ": " + checked.reason;
    }
  }
  if (!reasons.empty()) form.refuse(reasons);
  const auto present = [&] { return Form().guard(state_of(stored_extra_fields(context, fields, company))); };
  form.guard(state_of(stored));
  return !form.refused() && change_record(crm, {"item", company}, form, present, [&] {
    for (const auto& [field, value] : changes) {
      const std::string result = crm.Alterar_Aditivo(company, field, value);
      if (result != "0") form.refuse(result);
    }
  });
}

}  // namespace pradelis::site
