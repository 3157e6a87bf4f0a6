#include "site/visibility.h"

#include <algorithm>

#include "component/crm.h"
#include "site/request.h"
#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {

std::string Visibility::companies() const { return to_text(crm_.String_Empresa_Vendedor()); }

std::string Visibility::company_rows() const {
  return concat("pessoajuridica q cross join (", companies(), ") v cross join item_r j");
}

std::string Visibility::deals(DealStates states) const {
  // The component's selection looks at who keeps a company, also of those that another program deleted alone.
  return crm_.String_Negocio_Vendedor(0, Variant::null(), states.open, states.won, states.lost) +
         " and not exists (select 1 from excluido x where x.oid = rpessoa)";
}

std::string Visibility::deals_of(std::int32_t company) const {
  require_company(company);
  return crm_.String_Negocio_Vendedor(0, company);
}

std::string Visibility::users() const { return to_text(user_.information.get<Variant::Array>().at(4)); }

void Visibility::require(const std::string& statement) const {
  bool found = false;
  each_row(crm_, statement, 1, [&](const Row&) { found = true; });
  if (!found) throw Refusal{404};
}

// The selection stands in the FROM, so that one record is looked up by its key and the selection is not
// worked out for all others.

void Visibility::require_company(std::int32_t company) const {
  require(concat("select v.oid from (", companies(), ") v, pessoajuridica_r j where v.oid = ", company,
                 " and j.oid = ", company));
}

void Visibility::require_deal(std::int32_t deal) const {
  const Variant company =
      single_value(crm_, concat("select rpessoa from crm_pos_negocio where oid = ", deal));
  if (company.is_null()) throw Refusal{404};
  require(concat("select v.oid from (", deals_of(to_int32(company)), ") v, item_r i where v.oid = ", deal,
                 " and i.oid = ", deal));
}

void Visibility::require_company_or_deal(std::int32_t company, std::int32_t deal) const {
  if (deal != 0) {
    require_deal(deal);
  } else {
    require_company(company);
  }
}

void Visibility::require_contact(std::int32_t company, std::int32_t contact) const {
  require_company(company);
  require(concat("select i.oid from item_r i, agrupamento a where i.oid = ", contact,
                 " and i.cid = 45 and a.ritem = i.oid and a.rgrupo = ", company));
}

bool Visibility::administers(std::int32_t group) const {
  if (!user_.maintenance)
    return std::find(user_.groups.begin(), user_.groups.end(), group) != user_.groups.end();
  bool found = false;
  each_row(crm_, concat("select oid from item_r where cid = 18 and oid = ", group), 1,
           [&](const Row&) { found = true; });
  return found;
}

void Visibility::require_group(std::int32_t group) const {
  if (!administers(group)) throw Refusal{404};
}

bool Visibility::sees(std::int32_t person) const { return crm_.VerificaSubordinado(person); }

std::vector<Option> Visibility::salespeople() const {
  std::vector<Option> people;
  if (user_.maintenance) people.push_back({user_.person, "Manutenção"});
  each_row(crm_, concat("select oid, nome from vendedor_r where oid in (", users(), ") order by nome"), 0,
           [&](const Row& row) {
             people.push_back({row.id(0), row.component_text(1)});
           });
  return people;
}

}  // namespace pradelis::site
