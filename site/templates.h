#pragma once

#include <string>
#include <string_view>

#include "site/view.h"

namespace pradelis::site {

/// The page that a template of site/templates makes of `view`. Texts are escaped ({{{…}}} excepted).
/// Templates whose names begin with "_" are at hand as parts of the others.
std::string render(std::string_view name, const View& view);

/// A file of site/assets.
struct Asset {
  std::string_view content;
  std::string_view content_type;
  std::string_view version;  ///< changes with the content
};
/// The asset of this file name, or null.
const Asset* find_asset(std::string_view name);
/// Address of an asset, which changes with its content, so that browsers may keep it for good.
std::string asset_address(std::string_view name);

}  // namespace pradelis::site
