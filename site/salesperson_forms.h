#pragma once

#include <cstdint>
#include <string>

#include "site/salesperson_data.h"

/// What is asked of salespeople: who they are, which group they are in (that decides who sees whose records),
/// and below whom they stand in the component's tree.
namespace pradelis::site {

Form new_salesperson_form(Context& context);
/// The form of a salesperson as he is stored, guarded.
Form salesperson_form(Context& context, const Salesperson& person);

/// Gives a salesperson his name, and puts him below another one or a branch, or below nobody (0).
void place_salesperson(Context& context, std::int32_t person, const std::string& name, std::int32_t superior);

/// Whether `person` is `superior` or stands above him.
bool stands_above(component::CRM& crm, std::int32_t person, std::int32_t superior);

}  // namespace pradelis::site
