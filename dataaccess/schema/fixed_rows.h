#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "values/variant.h"

namespace pradelis::dataaccess::schema {

/// A row that every installation has, under a key below those that are handed out. Its first value is
/// the key.
struct FixedRow {
  std::string_view table;
  std::vector<std::pair<std::string_view, Variant>> values;
};

/// All but the maintenance user.
std::vector<FixedRow> fixed_rows();

/// The maintenance user, and the salesperson record that his login looks up by the same encoded
/// password.
std::vector<FixedRow> maintenance_rows(const std::string& encoded_password);

}  // namespace pradelis::dataaccess::schema
