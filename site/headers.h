#pragma once

#include "site/request.h"

namespace pradelis::site {

/// Adds what tells browsers to run and frame nothing but the site's own, to guess no types, and to keep
/// pages (not assets) to themselves.
void add_security_headers(Response& response, bool cacheable);

}  // namespace pradelis::site
