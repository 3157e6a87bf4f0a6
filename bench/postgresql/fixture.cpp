#include "bench/postgresql/fixture.h"

#include <cstdlib>
#include <stdexcept>

#include "component/thread_state.h"
#include "dataaccess/pool.h"
#include "dataaccess/schema/schema.h"
#include "values/text.h"

namespace pradelis::bench::postgresql {
namespace {

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) throw std::runtime_error("to be run by scripts/with-postgres");
  return value;
}

void add_items(Server& server, std::int32_t first, std::int32_t count, const std::string& name,
               std::int32_t cid, const std::string& scope) {
  server.run(
      concat("insert into item (oid, nome, cid, rescopo, criadopor, criadoem, codigo, observacao)"
             " select ",
             first, " + i, '", name, " ' || i, ", cid, ", ", scope,
             ", 7, timestamp '2026-03-05 14:07:33', 'C-17', 'Observação de vinte letras'"
             " from generate_series(0, ",
             count - 1, ") i"));
}

void fill(Server& server) {
  using C = Contents;
  add_items(server, C::first_company, C::companies, "Empresa", 46, "7");
  server.run(concat("insert into pessoajuridica (oid) select ", C::first_company,
                    " + i from generate_series(0, ", C::companies - 1, ") i"));
  add_items(server, C::first_deal, C::deals, "Negócio", 16075, "7");
  server.run(concat("insert into crm_pos_negocio (oid, rpessoa, rvendedor, valorprovavel) select ",
                    C::first_deal, " + i, ", C::first_company, " + i % ", C::companies, ", ", C::seller,
                    ", 1500 from generate_series(0, ", C::deals - 1, ") i"));
  server.run(concat("insert into crm_classeprodutos_negocio (rclasseproduto, rnegocio) select c, ",
                    C::first_deal, " + i from generate_series(0, ", C::deals - 1,
                    ") i, generate_series(101, 103) c"));
  add_items(server, C::first_group, C::groups, "Grupo", 18,
            concat("case i when 0 then 7 else ", C::first_group, " + (i - 1) / 10 end"));
  server.run(concat("insert into agrupamento (oid, ritem, rgrupo, rpapel) select 6000000 + i, ",
                    C::first_member, " + i, ", C::first_group, " + i % ", C::groups,
                    ", 26735 from generate_series(0, ", C::members - 1, ") i"));
  add_items(server, C::first_category, C::categories, "Categoria", 17, "7");
  server.run(concat("insert into categoria (oid, rsuper) select ", C::first_category,
                    " + i, case when i < 6 then 46 else ", C::first_category,
                    " + (i - 6) / 6 end from generate_series(0, ", C::categories - 1, ") i"));
  server.run("vacuum analyze");
}

}  // namespace

Fixture::Fixture() {
  const std::string host = environment("PRADELIS_POSTGRES_HOST") + " user=pradelis dbname=";
  {
    Server server(host + "postgres");
    server.run("create database medida");
    server.run("alter database medida set synchronous_commit = off");
  }
  settings_.connection_string = environment("PRADELIS_POSTGRES") + "Database=medida;";
  dataaccess::schema::InitOptions options;
  options.maintenance_password = [] { return std::string("medida"); };
  options.password_rounds = 1;
  dataaccess::schema::initialise(settings_.connection_string, options);
  component::reset_thread_state();
  by_hand_ = std::make_unique<Server>(host + "medida");
  fill(*by_hand_);
  apartment_ = std::make_unique<site::Apartment>(settings_);
}

Fixture::~Fixture() {
  component::reset_thread_state();
  dataaccess::close_idle_connections();
}

}  // namespace pradelis::bench::postgresql
