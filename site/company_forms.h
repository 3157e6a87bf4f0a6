#pragma once

#include <cstdint>
#include <vector>

#include "site/company_data.h"
#include "site/context.h"
#include "site/transaction.h"

/// What is asked of companies and contacts, by pages and by imported files alike.
namespace pradelis::site {

/// Held while a company is registered, so that no two of the same name are.
extern const RecordRow companies_row;

/// What a company may be: a prospect, or a client.
const std::vector<Option>& company_situations();

/// The form of a new company: also who owns it, and whether it is a client.
Form new_company_form(Context& context);
/// The form of a company as it is stored, guarded.
Form company_change_form(const Company& company);

/// The city that was typed; 0, with the form refused, when there is none of that name.
/// \param present  what the company has now: it may keep a city that was deleted
std::int32_t typed_city(Context& context, Form& form, const Company& present = {});

/// Registers the company of a form that was read; 0, with the form refused, when the component refuses it.
std::int32_t register_company(Context& context, Form& form, std::int32_t city);

/// The form of a new contact, or of `contact`.
Form contact_form(Context& context, const Contact* contact = nullptr);

}  // namespace pradelis::site
