#include "site/pager.h"

#include "site/identifiers.h"

namespace pradelis::site {

Pager::Pager(const Request& request, Order order) : order_(std::move(order)) {
  const std::string filters = request.query.encode_without({"apos", "antes"});
  address_ = request.path + "?" + (filters.empty() ? "" : filters + "&");
  const auto before = parse_identifier(request.query.get("antes"));
  backwards_ = before.has_value();
  from_ = before ? *before : parse_identifier(request.query.get("apos")).value_or(0);
}

std::string Pager::condition() const {
  if (from_ == 0) return {};
  const std::string comparison = order_.descending != backwards_ ? " < " : " > ";
  const std::string from = std::to_string(from_);
  const std::string key = "(" + order_.key_of_other + from + ")";
  return " and (" + order_.key + comparison + key + " or (" + order_.key + " = " + key + " and " +
         order_.identifier + comparison + from + "))";
}

std::string Pager::ordering() const {
  const std::string direction = order_.descending != backwards_ ? " desc" : "";
  return " order by " + order_.key + direction + ", " + order_.identifier + direction;
}

std::string Pager::address(const char* parameter, std::int32_t identifier) const {
  return address_ + parameter + "=" + std::to_string(identifier);
}

View Pager::view(std::int32_t first, std::int32_t last) const {
  const bool has_previous = backwards_ ? more_ : from_ != 0;
  const bool has_next = backwards_ || more_;
  View view;
  view.flag("paged", has_previous || has_next);
  view.optional("previous", has_previous ? address("antes", first) : std::string());
  view.optional("next", has_next ? address("apos", last) : std::string());
  return view;
}

}  // namespace pradelis::site
