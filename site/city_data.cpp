#include "site/city_data.h"

#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {

City read_city(Context& context, std::int32_t id) {
  City city;
  each_row(context.crm(),
           concat("select i.nome, c.rprovincia, e.nome, c.ddd from cidade c join item_r i on i.oid = c.oid"
                  " left join item e on e.oid = c.rprovincia where c.oid = ",
                  id),
           1, [&](const Row& row) {
             city = {id, row.text(0), row.id(1), row.text(2), row.text(3)};
           });
  if (city.id == 0) throw Refusal{404};
  return city;
}

const std::vector<Link>& city_trail() {
  static const std::vector<Link> trail = {{"/empresas", "Empresas"}, {"/cidades", "Cidades"}};
  return trail;
}

}  // namespace pradelis::site
