#include "command/init.h"

#include <iostream>

#include "command/exit_status.h"
#include "command/password.h"
#include "dataaccess/schema/schema.h"

namespace pradelis::command {

int init(const InitOptions& options) {
  using dataaccess::schema::InitOutcome;
  dataaccess::schema::InitOptions schema_options;
  schema_options.maintenance_password = [&options] {
    return options.password_file.empty() ? ask_for_new_password("do usuário de manutenção")
                                         : read_password(options.password_file);
  };
  const InitOutcome outcome = dataaccess::schema::initialise(options.database, schema_options);
  switch (outcome.kind) {
    case InitOutcome::Kind::Created:
      std::cout << "Banco de dados criado na versão " << outcome.version << ".\n";
      break;
    case InitOutcome::Kind::Upgraded:
      std::cout << "Banco de dados atualizado da versão " << outcome.from_version << " para a "
                << outcome.version << ".\n";
      break;
    case InitOutcome::Kind::UpToDate:
      std::cout << "Nada a fazer: o banco de dados já está na versão " << outcome.version << ".\n";
      break;
  }
  return exit_status::done;
}

}  // namespace pradelis::command
