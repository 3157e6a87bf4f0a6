#include "site/salespeople.h"

#include "component/crm.h"
#include "site/component_text.h"
#include "site/identifiers.h"
#include "site/rows.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

/// Codes are numbered by the table itself, so two registrations at the same time can compute the same.
constexpr int attempts_at_code = 5;

void enter_in_register(component::CRM& crm, const NewSalesperson& person, std::int32_t oid,
                       std::int32_t manager) {
  const std::string password = salesperson_password(crm, person.login, person.password);
  for (int attempt = 1;; ++attempt) {
    const std::int32_t code =
        to_int32(single_value(crm, "select (isnull(max(codvend),0) + 1) as codvend from vendedocad"));
    try {
      return append_row(crm, "vendedocad", [&](dataaccess::Recordset& row) {
        row.set("codvend", code);
        row.set("nome", person.name);
        row.set("rpessoa", oid);
        row.set("codger", manager);
        row.set("senhaven", password);
      });
    } catch (const Error& error) {
      if (error.number() != error_number::constraint_refused || attempt == attempts_at_code) throw;
    }
  }
}

}  // namespace

std::string salesperson_password(component::CRM& crm, const std::string& login, const std::string& password) {
  constexpr std::int32_t password_encoding = 11;
  return crm.QLCBase()->CodificarSenha(to_upper(login) + password, password_encoding);
}

std::int32_t register_salesperson(component::CRM& crm, const NewSalesperson& person, std::int32_t registrar,
                                  std::int32_t manager) {
  Variant login = person.login;
  Variant oid;
  if (!crm.Cadastrar_Vendedor(to_component_text(person.name), person.street, person.house, person.complement,
                              person.district, person.postal_code, person.city,
                              join_identifiers(person.groups), login, person.password, registrar, oid,
                              Variant())) {
    return 0;
  }
  enter_in_register(crm, person, to_int32(oid), manager);
  return to_int32(oid);
}

}  // namespace pradelis::site
