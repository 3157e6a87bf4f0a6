#pragma once

#include <string>

namespace pradelis::site {

/// What the component has written into the page of this thread's request since last asked. Pages put it,
/// escaped, into an attribute data-component, from where component.js shows it.
std::string take_component_html();

}  // namespace pradelis::site
