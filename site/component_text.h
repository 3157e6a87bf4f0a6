#pragma once

#include <string>
#include <string_view>

/// The border to what the component writes into pages as it is stored: names of categories and of
/// salespeople, and labels, choices and text values of extra fields. They are stored as HTML text, so that
/// the component's own HTML shows them as they were typed; where the site shows them itself, they are taken
/// back.
namespace pradelis::site {

/// What is stored for a typed text.
std::string to_component_text(std::string_view typed);

/// The typed text of what is stored. Texts that other programs stored plain stay as they are, save for the
/// four sequences that `to_component_text` makes.
std::string from_component_text(std::string_view stored);

}  // namespace pradelis::site
