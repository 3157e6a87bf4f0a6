#include <stdexcept>
#include <string>
#include <vector>

#include "bench/harness.h"
#include "bench/postgresql/fixture.h"
#include "values/text.h"

namespace pradelis::bench::postgresql {
namespace {

class VisibilityByHand {
 public:
  explicit VisibilityByHand(Server& server) : server_(server) {}

  std::string users(std::int32_t person) {
    const Result own = memberships_.run(std::to_string(person));
    groups_.clear();
    for (int row = 0; row < own.rows(); ++row) add_below(std::string(own.text(row, 2)));
    if (!members_) members_ = std::make_unique<Statement>(server_, statement_for(groups_.size()));
    const Result members = members_->run_with(groups_.data(), groups_.size());
    std::string list;
    for (int row = 0; row < members.rows(); ++row) list.append(members.text(row, 0)).append(", ");
    return list += std::to_string(person);
  }

 private:
  static std::string statement_for(std::size_t count) {
    std::string sql = "SELECT ritem FROM agrupamento WHERE rgrupo IN ($1";
    for (std::size_t i = 2; i <= count; ++i) sql += concat(",$", static_cast<std::int64_t>(i));
    return sql + ")";
  }

  void add_below(const std::string& group) {
    const Result found = children_.run(group);
    for (int row = 0; row < found.rows(); ++row) {
      groups_.emplace_back(found.text(row, 0));
      add_below(groups_.back());
    }
  }

  Server& server_;
  Statement memberships_{server_, "SELECT * FROM agrupamento WHERE ritem = $1 and rpapel = 26735"};
  Statement children_{server_, "SELECT oid FROM item_r WHERE rescopo = $1"};
  std::unique_ptr<Statement> members_;
  std::vector<std::string> groups_;
};

/// Reads the tree in the component's order; of the page it makes the names only, since round trips are
/// what is compared.
class TreeByHand {
 public:
  explicit TreeByHand(Server& server) : server_(server) {}

  std::string names() {
    std::string all;
    const Result roots = roots_.run();
    for (int row = 0; row < roots.rows(); ++row) add(roots, row, all);
    return all;
  }

 private:
  void add(const Result& rows, int row, std::string& all) {
    all.append(rows.text(row, 1)).append("\n");
    const Result children = children_.run(std::string(rows.text(row, 0)));
    for (int child = 0; child < children.rows(); ++child) add(children, child, all);
  }

  Server& server_;
  Statement roots_{server_,
                   "Select oid, nome from categoria_r where rsuper = 46 and oid > 100000 order by nome"};
  Statement children_{server_, "Select oid, nome from categoria_r where rsuper = $1 order by nome"};
};

}  // namespace

void measure_visibility(Fixture& fixture) {
  VisibilityByHand by_hand(fixture.by_hand());
  const component::CRMPtr crm = fixture.crm();
  const component::GrupoUsuariosPtr groups = crm->cGrupoUsuarios();
  if (groups->fUsuariosVisiveis(Contents::seller).size() != by_hand.users(Contents::seller).size())
    throw std::runtime_error("the visibility lists differ");
  report({"a visibility list, 1,000 groups, 10,000 members", 1.1, 30,
          [&] { groups->fUsuariosVisiveis(Contents::seller); }, [&] { by_hand.users(Contents::seller); }});
}

void measure_category_tree(Fixture& fixture) {
  TreeByHand by_hand(fixture.by_hand());
  const component::CRMPtr crm = fixture.crm();
  const component::PessoaJuridicaPtr tree = crm->cPessoaJuridica();
  tree->Montar_Arv_Classif("cat", 10, "");
  const std::string page = fixture.take_written();
  const std::string names = by_hand.names();
  for (const std::string_view name : split(names, '\n')) {
    if (page.find(name) == std::string::npos) throw std::runtime_error("the trees differ");
  }
  report({"a tree of 2,000 categories, depth 5", 1.1, 20,
          [&] {
            tree->Montar_Arv_Classif("cat", 10, "");
            fixture.take_written();
          },
          [&] { by_hand.names(); }});
}

}  // namespace pradelis::bench::postgresql
