#pragma once

#include <cstdint>
#include <string>

#include "tests/com/page_twin/twin_page.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

/// What the sample pages have in common, as `crm.inc` does it.
namespace pradelis::test {

void begin(TwinPage& page, const Visitor& visitor, const Variant& title);
void warn(TwinPage& page, const std::string& text);
inline void end(TwinPage& page) { page.common_text(13); }

/// The choices of a list: the rows of a statement.
void options(TwinPage& page, component::CRM& crm, const std::string& statement, const Variant& chosen);

std::int32_t identifier(const std::string& text);
std::string identifiers(const std::string& list);
/// A date without its time of day.
inline std::string day(const Variant& date) { return concat(date).substr(0, 10); }
std::string money(component::CRM& crm, const Variant& value);

/// Runs a page's action; gives the description of its failure.
template <class Action>
std::string failure_of(Action&& action) {
  try {
    action();
    return {};
  } catch (const Error& error) {
    return error.description();
  }
}

void serve_login(TwinPage& page, Visitor& visitor);
void serve_logout(TwinPage& page, Visitor& visitor, component::CRM& crm);
void serve_deals(TwinPage& page, Visitor& visitor, component::CRM& crm);
void serve_new_deal(TwinPage& page, Visitor& visitor, component::CRM& crm);
void serve_company(TwinPage& page, Visitor& visitor, component::CRM& crm);
void serve_categories(TwinPage& page, Visitor& visitor, component::CRM& crm);
void serve_salespeople(TwinPage& page, Visitor& visitor, component::CRM& crm);

}  // namespace pradelis::test
