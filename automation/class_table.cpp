#include "automation/class_table.h"

#include "values/text.h"

namespace pradelis::automation {
namespace {

bool serves(MemberKind kind, Use use) noexcept {
  switch (use) {
    case Use::Read:
      return kind == MemberKind::Method || kind == MemberKind::Get;
    case Use::Let:
      return kind == MemberKind::Let;
    case Use::Set:
      return kind == MemberKind::Set;
  }
  return false;
}

char lower(char c) noexcept { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::size_t HashIgnoringCase::operator()(std::string_view text) const noexcept {
  std::uint64_t hash = 14695981039346656037U;  // FNV-1a
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(lower(c))) * 1099511628211U;
  return static_cast<std::size_t>(hash);
}

bool EqualIgnoringCase::operator()(std::string_view left, std::string_view right) const noexcept {
  return equal_ignoring_case(left, right);
}

ClassTable::ClassTable(std::string_view class_name, InstanceTest instance_test, std::vector<Member> members,
                       std::optional<Elements> elements)
    : name_(class_name), is_instance_(instance_test), members_(std::move(members)), elements_(elements) {
  rows_of_.resize(members_.size() + 1);
  for (const Member& member : members_) {
    ids_.emplace(member.name, member.id);
    rows_of_[static_cast<std::size_t>(member.id)].push_back(&member);
  }
}

std::optional<std::int32_t> ClassTable::id_of(std::string_view name) const {
  const auto found = ids_.find(name);
  if (found == ids_.end()) return std::nullopt;
  return found->second;
}

const Member* ClassTable::find(std::int32_t id, Use use) const noexcept {
  if (id < 0 || static_cast<std::size_t>(id) >= rows_of_.size()) return nullptr;
  for (const Member* member : rows_of_[static_cast<std::size_t>(id)]) {
    if (serves(member->kind, use)) return member;
  }
  return nullptr;
}

std::optional<std::size_t> parameter_index(const Member& member, std::string_view name) noexcept {
  for (std::size_t i = 0; i < member.parameters.size(); ++i) {
    if (equal_ignoring_case(member.parameters[i].name, name)) return i;
  }
  return std::nullopt;
}

}  // namespace pradelis::automation
