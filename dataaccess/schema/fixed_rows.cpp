#include "dataaccess/schema/fixed_rows.h"

#include "dataaccess/schema/fixed.h"
#include "values/clock.h"

namespace pradelis::dataaccess::schema {
namespace {

FixedRow item(std::int32_t oid, const char* nome, std::int32_t cid, std::int32_t escopo) {
  return {"item",
          {{"oid", oid},
           {"nome", nome},
           {"cid", cid},
           {"rescopo", escopo},
           {"criadopor", fixed::system_object},
           {"criadoem", now()}}};
}

FixedRow system_item(std::int32_t oid, const char* nome) {
  return item(oid, nome, fixed::class_system, fixed::system_object);
}

FixedRow person(std::int32_t oid, const char* razao_social) {
  return {"pessoa", {{"oid", oid}, {"razaosocial", razao_social}}};
}

/// A null password matches none: nobody logs in to the account.
FixedRow user(std::int32_t oid, const Variant& senha) {
  return {"usuario", {{"oid", oid}, {"senha", senha}}};
}

FixedRow category(std::int32_t oid, std::int32_t parent) {
  return {"categoria", {{"oid", oid}, {"rsuper", parent}}};
}

FixedRow membership(std::int32_t oid, std::int32_t item, std::int32_t group, std::int32_t role) {
  return {"agrupamento", {{"oid", oid}, {"ritem", item}, {"rgrupo", group}, {"rpapel", role}}};
}

void add_classes(std::vector<FixedRow>& rows) {
  rows.push_back(system_item(fixed::class_group, "Grupo de usuários"));
  rows.push_back(system_item(fixed::class_city, "Cidade"));
  rows.push_back(system_item(fixed::class_person, "Pessoa física"));
  rows.push_back(system_item(fixed::class_company, "Pessoa jurídica"));
  rows.push_back(system_item(fixed::class_address, "Endereço"));
  rows.push_back(system_item(fixed::class_user, "Usuário"));
  rows.push_back(system_item(fixed::class_deal, "Negócio"));
  rows.push_back(system_item(fixed::class_activity, "Atividade"));
}

void add_categories(std::vector<FixedRow>& rows) {
  rows.push_back(system_item(fixed::category_contact, "Contato"));
  rows.push_back(category(fixed::category_contact, fixed::class_person));
  rows.push_back(system_item(fixed::category_company_address, "Endereço da empresa"));
  rows.push_back(category(fixed::category_company_address, fixed::class_address));
  rows.push_back(system_item(fixed::category_client, "Cliente"));
  rows.push_back(category(fixed::category_client, fixed::class_company));
  rows.push_back(system_item(fixed::category_prospect, "Prospecto"));
  rows.push_back(category(fixed::category_prospect, fixed::class_company));
}

void add_list(std::vector<FixedRow>& rows, std::int32_t oid, const char* name) {
  rows.push_back(system_item(oid, name));
  rows.push_back(category(oid, fixed::system_object));
}

void add_lists(std::vector<FixedRow>& rows) {
  add_list(rows, fixed::list_contact_roles, "Cargos de contatos");
  add_list(rows, fixed::list_loss_reasons, "Motivos de perda");
  add_list(rows, fixed::list_product_classes, "Classes de produto");
  add_list(rows, fixed::list_states, "Estados");
  add_list(rows, fixed::list_activity_kinds, "Tipos de atividade");

  std::int32_t oid = 2301;
  for (const char* state : {"Acre",
                            "Alagoas",
                            "Amapá",
                            "Amazonas",
                            "Bahia",
                            "Ceará",
                            "Distrito Federal",
                            "Espírito Santo",
                            "Goiás",
                            "Maranhão",
                            "Mato Grosso",
                            "Mato Grosso do Sul",
                            "Minas Gerais",
                            "Pará",
                            "Paraíba",
                            "Paraná",
                            "Pernambuco",
                            "Piauí",
                            "Rio de Janeiro",
                            "Rio Grande do Norte",
                            "Rio Grande do Sul",
                            "Rondônia",
                            "Roraima",
                            "Santa Catarina",
                            "São Paulo",
                            "Sergipe",
                            "Tocantins"}) {
    rows.push_back(system_item(oid, state));
    rows.push_back(category(oid, fixed::list_states));
    ++oid;
  }
}

void add_system_objects(std::vector<FixedRow>& rows) {
  // Placed under nothing: a walk down from the object must not meet the object again.
  rows.push_back(item(fixed::system_object, "SISTEMA", fixed::class_system, 0));
  rows.push_back(person(fixed::system_object, ""));
  rows.push_back(user(fixed::system_object, Variant::null()));
  rows.push_back(item(fixed::component_user, "CRM", fixed::class_user, fixed::group_user_accounts));
  rows.push_back(user(fixed::component_user, Variant::null()));
  rows.push_back(system_item(fixed::role_group_member, "Membro de grupo de usuários"));
  rows.push_back(system_item(fixed::group_user_accounts, "Contas de usuários"));
  rows.push_back(system_item(fixed::relation_user_account, "Conta de usuário da pessoa"));
  rows.push_back(system_item(fixed::application, "CRM"));
  rows.push_back(system_item(fixed::unit_current_company, "Empresa corrente"));
}

void add_current_company(std::vector<FixedRow>& rows) {
  const std::int32_t company = fixed::current_company;
  const std::int32_t address = fixed::current_company_address;
  rows.push_back(item(company, "Empresa corrente", fixed::class_company, fixed::system_object));
  rows.push_back(person(company, "Empresa corrente"));
  rows.push_back({"pessoajuridica", {{"oid", company}}});
  rows.push_back(item(address, "", fixed::class_address, company));
  rows.push_back({"endereco", {{"oid", address}, {"ritem", company}}});
  rows.push_back({"classificacao",
                  {{"oid", 50003}, {"ritem", address}, {"rcategoria", fixed::category_company_address}}});
  rows.push_back(item(fixed::current_company_setting, "Empresa corrente", fixed::class_system, company));
  rows.push_back({"utilizacao",
                  {{"oid", 50004},
                   {"ritem", fixed::component_user},
                   {"runidade", fixed::unit_current_company},
                   {"rutilizado", fixed::current_company_setting}}});
}

FixedRow birth_date() {
  return {"dadoadicional",
          {{"oid", fixed::field_birth_date},
           {"ritem", fixed::class_person},
           {"valor", "Data de nascimento"},
           {"rtipo", 3},
           {"rlista", fixed::system_object},
           {"visivel", 1}}};
}

}  // namespace

std::vector<FixedRow> fixed_rows() {
  std::vector<FixedRow> rows;
  add_system_objects(rows);
  add_classes(rows);
  add_categories(rows);
  add_lists(rows);
  add_current_company(rows);
  rows.push_back(birth_date());
  return rows;
}

std::vector<FixedRow> maintenance_rows(const std::string& encoded_password) {
  const std::int32_t oid = fixed::maintenance_user;
  return {
      item(oid, fixed::maintenance_name, fixed::class_user, fixed::group_user_accounts),
      user(oid, encoded_password),
      membership(50005, oid, fixed::group_user_accounts, fixed::system_object),
      {"vendedocad",
       {{"codvend", 0},
        {"nome", "Manutenção"},
        {"rpessoa", fixed::system_object},
        {"senhaven", encoded_password}}},
  };
}

}  // namespace pradelis::dataaccess::schema
