#include "site/group_data.h"

#include "dataaccess/schema/fixed.h"
#include "site/identifiers.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

std::vector<Group> select_groups(Context& context, const std::string& condition) {
  std::vector<Group> groups;
  each_row(context.crm(),
           concat("select oid, nome, rescopo, observacao from item_r where cid = ", fixed::class_group,
                  condition, " order by nome, oid"),
           0, [&](const Row& row) {
             groups.push_back({row.id(0), row.text(1), row.id(2), row.text(3)});
           });
  return groups;
}

}  // namespace

const RecordRow groups_row{"item", fixed::class_group};

std::vector<Group> read_groups(Context& context) {
  if (context.user().maintenance) return select_groups(context, "");
  if (context.user().groups.empty()) return {};
  return select_groups(context, concat(" and oid in (", join_identifiers(context.user().groups), ")"));
}

Group read_group(Context& context, std::int32_t group) {
  context.visible().require_group(group);
  const auto found = select_groups(context, concat(" and oid = ", group));
  if (found.empty()) throw Refusal{404};
  return found.front();
}

std::vector<Option> group_options(const std::vector<Group>& groups) {
  std::vector<Option> options;
  for (const Group& group : groups) options.push_back({group.id, group.name});
  return options;
}

std::vector<std::int32_t> below_group(Context& context, std::int32_t group) {
  return parse_identifiers(context.crm().cGrupoUsuarios()->fSubGrupos(group)).value();
}

std::vector<Member> read_members(Context& context, const std::vector<std::int32_t>& groups) {
  std::vector<Member> members;
  if (groups.empty()) return members;
  each_row(context.crm(),
           concat("select a.rgrupo, i.oid, i.nome from agrupamento a join item_r i on i.oid = a.ritem"
                  " where a.rpapel = ",
                  fixed::role_group_member, " and a.rgrupo in (", join_identifiers(groups),
                  ") order by i.nome, i.oid"),
           0, [&](const Row& row) {
             members.push_back({row.id(0), {row.id(1), row.component_text(2)}});
           });
  return members;
}

}  // namespace pradelis::site
