#pragma once

#include <istream>
#include <string>
#include <utility>
#include <vector>

/// What one visitor asks of a web application, as a text file says it. All texts are UTF-8.
namespace pradelis::test {

/// Names and values that came with a page's address or form, in their order.
using Fields = std::vector<std::pair<std::string, std::string>>;

/// One line of the file:
///   APPLICATION name=value             a variable of the application
///   GET page.asp?name=value&...        a page
///   POST page.asp?... name=value&...   a page that receives a form
struct PageRequest {
  std::string verb;
  std::string name;   ///< of the variable or of the page
  std::string value;  ///< of the variable
  Fields query;
  Fields form;
};

/// All requests of a file. Empty lines separate nothing.
std::vector<PageRequest> read_requests(std::istream& file);

/// The values of the fields of this name, whatever its case, joined by ", "; empty when there is none.
std::string value_of(const Fields& fields, const std::string& name);

}  // namespace pradelis::test
