#pragma once

#include <string_view>
#include <vector>

/// The files of site/templates and site/assets, which the build puts into the program
/// (cmake/embed.cmake).
namespace pradelis::site {

struct EmbeddedFile {
  std::string_view name;  ///< path below its folder; templates without ".mustache"
  std::string_view content;
  std::string_view version;  ///< digest of the content
};

const std::vector<EmbeddedFile>& embedded_templates();
const std::vector<EmbeddedFile>& embedded_assets();

}  // namespace pradelis::site
