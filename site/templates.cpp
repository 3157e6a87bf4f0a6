#include "site/templates.h"

#include <map>
#include <mstch/mstch.hpp>
#include <stdexcept>

#include "site/embedded.h"

namespace pradelis::site {
namespace {

mstch::map to_nodes(const View& view);

mstch::node to_node(const View::Value& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* flag = std::get_if<bool>(&value)) return *flag;
  mstch::array list;
  for (const View& item : std::get<std::vector<View>>(value)) list.emplace_back(to_nodes(item));
  return list;
}

mstch::map to_nodes(const View& view) {
  mstch::map nodes;
  for (const auto& [name, value] : view.values()) nodes.emplace(name, to_node(value));
  return nodes;
}

const std::map<std::string, std::string>& partials() {
  static const auto found = [] {
    std::map<std::string, std::string> partials;
    for (const EmbeddedFile& file : embedded_templates()) {
      if (file.name.front() == '_') partials.emplace(file.name, file.content);
    }
    return partials;
  }();
  return found;
}

const std::map<std::string, std::string, std::less<>>& pages() {
  static const auto found = [] {
    std::map<std::string, std::string, std::less<>> pages;
    for (const EmbeddedFile& file : embedded_templates()) pages.emplace(file.name, file.content);
    return pages;
  }();
  return found;
}

std::string_view content_type(std::string_view name) {
  if (name.ends_with(".css")) return "text/css; charset=utf-8";
  if (name.ends_with(".js")) return "text/javascript; charset=utf-8";
  if (name.ends_with(".gif")) return "image/gif";
  if (name.ends_with(".svg")) return "image/svg+xml";
  return "application/octet-stream";
}

}  // namespace

std::string render(std::string_view name, const View& view) {
  const auto page = pages().find(name);
  if (page == pages().end()) throw std::logic_error("no template " + std::string(name));
  return mstch::render(page->second, to_nodes(view), partials());
}

const Asset* find_asset(std::string_view name) {
  static const auto assets = [] {
    std::map<std::string_view, Asset> found;
    for (const EmbeddedFile& file : embedded_assets()) {
      found.emplace(file.name, Asset{file.content, content_type(file.name), file.version});
    }
    return found;
  }();
  const auto asset = assets.find(name);
  return asset == assets.end() ? nullptr : &asset->second;
}

std::string asset_address(std::string_view name) {
  const Asset* asset = find_asset(name);
  if (asset == nullptr) throw std::logic_error("no asset " + std::string(name));
  return "/assets/" + std::string(name) + "?v=" + std::string(asset->version);
}

}  // namespace pradelis::site
