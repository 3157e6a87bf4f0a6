#pragma once

#include <string>

namespace pradelis::test {

/// The script that a page is: text outside `<% %>` becomes `Response.Write`, so does an expression in
/// `<%= %>`; a directive `<%@ %>` gives nothing.
std::wstring script_of_page(const std::wstring& page);

/// A page's text, with the files that it includes in their places.
std::wstring read_page(const std::wstring& folder, const std::wstring& name);

}  // namespace pradelis::test
