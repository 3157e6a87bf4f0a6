#pragma once

#include <string_view>
#include <vector>

#include "site/parameters.h"
#include "site/request.h"

namespace pradelis::site {

/// Takes apart what a form with files sends: its fields are added to `fields`, its files to `uploads`. The
/// field of a file that nobody chose adds nothing.
/// \param content_type  "multipart/form-data; boundary=…"
/// False when the body is not of that form.
bool parse_multipart(std::string_view content_type, std::string_view body, Parameters& fields,
                     std::vector<Upload>& uploads);

}  // namespace pradelis::site
