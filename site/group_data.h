#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "site/context.h"
#include "site/transaction.h"

/// The groups of users: a tree, of which everybody administers what is below his own groups.
namespace pradelis::site {

struct Group {
  std::int32_t id = 0;
  std::string name;
  std::int32_t parent = 0;
  std::string note;
};

/// Held while the tree is changed, so that no two changes make a cycle together.
extern const RecordRow groups_row;

/// The groups that the visitor administers, by name.
std::vector<Group> read_groups(Context& context);
/// One of them; refuses with 404 any other.
Group read_group(Context& context, std::int32_t group);

std::vector<Option> group_options(const std::vector<Group>& groups);

/// What is below a group, at any depth.
std::vector<std::int32_t> below_group(Context& context, std::int32_t group);

/// A salesperson in a group.
struct Member {
  std::int32_t group = 0;
  Option person;
};

/// The members of these groups, by name.
std::vector<Member> read_members(Context& context, const std::vector<std::int32_t>& groups);

}  // namespace pradelis::site
