#include <optional>
#include <string>
#include <vector>

#include "bench/cases.h"
#include "bench/harness.h"

namespace pradelis::bench {
namespace {

class VisibilityByHand {
 public:
  explicit VisibilityByHand(Database& database) : database_(database) {}

  std::string users(std::int32_t person) {
    memberships_.bind(1, std::int64_t{person});
    std::vector<std::int64_t> own;
    while (memberships_.step()) own.push_back(memberships_.integer(2));
    memberships_.reset();
    groups_.clear();
    for (std::int64_t group : own) below(group);

    std::string statement = "SELECT ritem FROM agrupamento WHERE rgrupo IN (?";
    for (std::size_t i = 1; i < groups_.size(); ++i) statement += ",?";
    if (!members_) members_.emplace(database_, (statement + ")").c_str());
    for (std::size_t i = 0; i < groups_.size(); ++i) members_->bind(static_cast<int>(i) + 1, groups_[i]);
    std::string list;
    while (members_->step()) list.append(std::to_string(members_->integer(0))).append(", ");
    members_->reset();
    return list += std::to_string(person);
  }

 private:
  void below(std::int64_t group) {
    children_.bind(1, group);
    std::vector<std::int64_t> found;
    while (children_.step()) found.push_back(children_.integer(0));
    children_.reset();
    for (std::int64_t child : found) {
      groups_.push_back(child);
      below(child);
    }
  }

  Database& database_;
  Statement memberships_{database_, "SELECT * FROM agrupamento WHERE ritem = ? and rpapel = 26735"};
  Statement children_{database_, "SELECT oid FROM item_r WHERE rescopo = ?"};
  std::optional<Statement> members_;
  std::vector<std::int64_t> groups_;
};

}  // namespace

void measure_visibility(Fixture& fixture) {
  VisibilityByHand by_hand(fixture.by_hand());
  const component::GrupoUsuariosPtr groups = fixture.crm()->cGrupoUsuarios();
  if (groups->fUsuariosVisiveis(Contents::seller) != by_hand.users(Contents::seller))
    throw std::runtime_error("the visibility lists differ");
  report({"a visibility list, 1,000 groups, 10,000 members", 1.15, 200,
          [&] { groups->fUsuariosVisiveis(Contents::seller); }, [&] { by_hand.users(Contents::seller); }});
}

}  // namespace pradelis::bench
