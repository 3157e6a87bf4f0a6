#include "site/company_data.h"

#include "site/rows.h"
#include "values/text.h"

namespace pradelis::site {

Company read_company(Context& context, std::int32_t id) {
  context.visible().require_company(id);
  Company company;
  each_row(
      context.crm(),
      concat(
          "select j.nome, p.razaosocial, j.observacao, j.criadopor, o.nome, j.criadoem, e.rua, e.numero,"
          " e.complemento, e.bairro, ci.nome, e.cep,"
          " case when j.oid in (select ritem from classificacao where rcategoria = 2121) then 1 else 0 end,"
          " e.rcidade"
          " from pessoajuridica_r j left join pessoa p on p.oid = j.oid left join item o on o.oid = j.criadopor"
          " left join endereco e on e.oid = (select min(oid) from endereco where ritem = j.oid)"
          " left join item ci on ci.oid = e.rcidade where j.oid = ",
          id),
      1, [&](const Row& row) {
        company = {id,
                   row.text(0),
                   row.text(1),
                   row.text(2),
                   row.id(3),
                   row.component_text(4),
                   day_text(row.value(5)),
                   row.text(6),
                   row.text(7),
                   row.text(8),
                   row.text(9),
                   row.text(10),
                   row.text(11),
                   row.id(12) == 1,
                   row.id(13)};
      });
  return company;
}

Company read_own_company(Context& context, std::int32_t id) {
  Company company = read_company(context, id);
  if (!context.visible().sees(company.owner)) throw Refusal{404};
  return company;
}

std::vector<Contact> read_contacts(Context& context, std::int32_t company) {
  std::vector<Contact> contacts;
  each_row(context.crm(),
           concat("select i.oid, i.nome, a.rpapel, r.nome from agrupamento a join item_r i on i.oid = a.ritem"
                  " left join item r on r.oid = a.rpapel where a.rgrupo = ",
                  company, " and i.cid = 45 order by i.nome, i.oid"),
           0, [&](const Row& row) {
             contacts.push_back({row.id(0), row.text(1), row.id(2), row.text(3)});
           });
  return contacts;
}

std::vector<Option> contact_options(Context& context, std::int32_t company) {
  std::vector<Option> options;
  for (const Contact& contact : read_contacts(context, company)) {
    options.push_back({contact.id, contact.role_name.empty()
                                       ? contact.name
                                       : contact.name + " (" + contact.role_name + ")"});
  }
  return options;
}

std::string company_address(std::int32_t company) { return "/empresas/" + std::to_string(company); }

std::vector<Link> company_trail(const Company& company) {
  return {{"/empresas", "Empresas"}, {company_address(company.id), company.name}};
}

}  // namespace pradelis::site
