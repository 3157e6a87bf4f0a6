#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "site/context.h"

/// Extra fields of companies: what is asked beyond what the system asks by itself.
namespace pradelis::site {

enum class FieldType : std::int32_t { Text = 1, Reference = 2, Date = 3, Number = 4 };

struct ExtraField {
  std::int32_t id = 0;
  std::string label;  ///< as typed
  FieldType type = FieldType::Text;
  std::int32_t list = 0;  ///< where its choices come from; 0 for a field that is typed into
  bool visible = true;
};

/// The extra fields of companies in their order, the hidden ones too when `hidden`.
std::vector<ExtraField> read_extra_fields(component::CRM& crm, bool hidden);

/// What was typed into a form of extra fields, by field, as typed.
using TypedFields = std::map<std::int32_t, std::string>;

/// The rows that the component writes for the visible fields, with the values of `company`.
std::string extra_field_rows(Context& context, const std::vector<ExtraField>& fields, std::int32_t company);
/// The same rows with what was typed in place of the stored values.
std::string extra_field_rows(Context& context, const std::vector<ExtraField>& fields,
                             const TypedFields& typed);

/// What the posted rows hold for these fields.
TypedFields typed_extra_fields(const Parameters& posted, const std::vector<ExtraField>& fields);

/// The company's values, as they look in their fields.
TypedFields stored_extra_fields(Context& context, const std::vector<ExtraField>& fields,
                                std::int32_t company);

/// Stores what was changed; nothing when anything of it is wrong, or was changed by somebody else too.
/// \param before  what the form showed before it was typed into
/// Reasons go into `form`. True when all is stored.
bool store_extra_fields(Context& context, Form& form, const std::vector<ExtraField>& fields,
                        const TypedFields& typed, const TypedFields& before, std::int32_t company);

/// What a form of extra fields consists of, for "_extra_fields": the rows, and what they showed before they
/// were typed into.
void add_extra_fields(View& view, std::string rows, const TypedFields& before);
/// What a posted form showed before it was typed into.
TypedFields shown_extra_fields(const Parameters& posted, const std::vector<ExtraField>& fields);

}  // namespace pradelis::site
