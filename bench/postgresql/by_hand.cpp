#include "bench/postgresql/by_hand.h"

#include <stdexcept>
#include <vector>

namespace pradelis::bench::postgresql {

Server::Server(const std::string& parameters) : connection_(PQconnectdb(parameters.c_str())) {
  if (PQstatus(connection_) == CONNECTION_OK) return;
  const std::string reason = PQerrorMessage(connection_);
  PQfinish(connection_);
  throw std::runtime_error(reason);
}

Result Server::checked(PGresult* result) {
  Result owned(result);
  const ExecStatusType status = PQresultStatus(result);
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
    throw std::runtime_error(PQerrorMessage(connection_));
  }
  return owned;
}

void Server::run(const std::string& sql) { checked(PQexec(connection_, sql.c_str())); }

std::string Server::prepare(const std::string& sql) {
  std::string name = "s" + std::to_string(++statements_);
  checked(PQprepare(connection_, name.c_str(), sql.c_str(), 0, nullptr));
  return name;
}

Result Server::execute(const std::string& statement, const char* const* values, int count) {
  return checked(PQexecPrepared(connection_, statement.c_str(), count, values, nullptr, nullptr, 0));
}

Result Statement::run_with(const std::string* values, std::size_t count) const {
  std::vector<const char*> addresses;
  addresses.reserve(count);
  for (std::size_t i = 0; i < count; ++i) addresses.push_back(values[i].c_str());
  return server_.execute(name_, addresses.data(), static_cast<int>(count));
}

}  // namespace pradelis::bench::postgresql
