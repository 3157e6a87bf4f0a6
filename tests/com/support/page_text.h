#pragma once

#include <string>
#include <vector>

/// Pages for the platform's web server, as their authors write them. All texts are UTF-8.
namespace pradelis::test {

/// A piece of a page.
struct PagePart {
  bool is_script = false;  ///< stands between `<%` and `%>`, which are left off; else it is HTML
  std::string text;
};

/// A page's text, with the files that it includes in their places. Raises a std::runtime_error when the page
/// or one of them is not there.
std::string read_page(const std::string& folder, const std::string& name);

/// A page cut at its tags. There are no empty pieces of HTML. Raises a std::runtime_error when a tag has no
/// end.
std::vector<PagePart> parts_of(const std::string& page);

/// The script that a page is: HTML becomes `Response.Write`, so does an expression in `<%= %>`; a directive
/// `<%@ %>` gives nothing. An "Option Explicit" comes first.
std::string script_of(const std::vector<PagePart>& page);

}  // namespace pradelis::test
