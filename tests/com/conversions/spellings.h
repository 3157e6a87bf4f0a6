#pragma once

#include <string>

/// Other spellings of the same number or date, in small letters. Each gives the text as it is where it does
/// not apply.
namespace pradelis::test {

/// "1d3" as "1e3".
std::string with_e_for_d(const std::string& text);

/// "5 mar. 2009" and "5 mar 2009" as "5 março 2009"; "ter, 3/3/2009" as "3/3/2009": days of the week mean
/// nothing.
std::string with_full_names(const std::string& text);

/// "2 p" as "2 pm".
std::string with_full_half_of_day(const std::string& text);

}  // namespace pradelis::test
