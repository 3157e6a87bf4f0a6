#include "command/demo.h"

#include <cstdio>
#include <exception>

#include "command/demo_names.h"
#include "command/demo_writer.h"
#include "dataaccess/schema/engine.h"
#include "dataaccess/schema/fixed.h"
#include "dataaccess/thread_connection.h"
#include "site/apartment.h"
#include "site/rows.h"
#include "site/secrets.h"
#include "values/text.h"

namespace pradelis::command {
namespace {

/// The demonstration can be made again when the power fails: forcing each of its thousands of rows to
/// the disk would only cost time.
void stop_forcing_writes(component::CRM& crm) {
  auto& connection = dataaccess::connection_of(*crm.QLCConn());
  const auto& engine = dataaccess::schema::engine_of(connection.live().connection().dialect());
  if (!engine.unforced_writes.empty()) connection.Execute(std::string(engine.unforced_writes), nullptr);
}

bool has_records(component::CRM& crm) {
  return !site::single_value(
              crm, concat("select max(oid) from item where oid >= ", dataaccess::fixed::first_free_oid))
              .is_null();
}

void print_logins(const std::string& password) {
  std::puts("Demonstração pronta. Vendedores (a senha é a mesma para todos):\n");
  for (const auto& person : demo_names::salespeople) {
    const std::string_view group = demo_names::groups[static_cast<std::size_t>(person.group)].name;
    std::printf("  %-10s %s (%s)\n", std::string(person.login).c_str(), std::string(person.name).c_str(),
                std::string(group).c_str());
  }
  std::printf("\n  Senha: %s\n", password.c_str());
}

}  // namespace

int demo(const DemoOptions& options) {
  site::ApplicationSettings settings;
  settings.connection_string = options.database;
  const site::Apartment apartment(settings);
  const auto crm = std::make_shared<component::CRM>();
  if (has_records(*crm)) {
    std::fputs("pradelis: o banco já tem registros; a demonstração só preenche um banco novo.\n", stderr);
    return 1;
  }
  stop_forcing_writes(*crm);
  const std::string password = site::random_token(40);
  {
    Progress progress(DemoWriter::steps(options));
    DemoWriter(*crm, options, progress).write(password);
  }
  print_logins(password);
  return 0;
}

}  // namespace pradelis::command
