#include "site/still_deals.h"

#include <set>

#include "site/identifiers.h"
#include "site/rows.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::site {

std::string last_move(const char* deal, const char* registered) {
  return concat("isnull((select max(x.data) from crm_atividade x where x.rnegociopossivel = ", deal, "), ",
                registered, ")");
}

bool stands_still(const Variant& last_move) {
  return day_number(today()) - day_number(to_date(last_move)) > still_days;
}

void mark_still(Context& context, std::vector<std::pair<std::int32_t, View>>& deals) {
  if (deals.empty()) return;
  std::vector<std::int32_t> ids;
  for (const auto& [id, view] : deals) ids.push_back(id);
  std::set<std::int32_t> still;
  each_row(
      context.crm(),
      concat("select n.oid, ", last_move("n.oid", "i.criadoem"),
             " from crm_pos_negocio n join item i on i.oid = n.oid where n.fechamento is null and n.oid in (",
             join_identifiers(ids), ")"),
      0, [&](const Row& row) {
        if (stands_still(row.value(1))) still.insert(row.id(0));
      });
  for (auto& [id, view] : deals) view.flag("still", still.contains(id));
}

}  // namespace pradelis::site
