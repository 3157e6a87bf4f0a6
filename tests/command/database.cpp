#include "database.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "tests/support/engine.h"

namespace pradelis::command {

Database::Database()
    : on_server_(tests::on_postgresql()
                     ? std::make_unique<tests::PostgresqlDatabase>(tests::PostgresqlDatabase::Content::Empty)
                     : nullptr),
      url_(on_server_ ? on_server_->connection_string() : "sqlite:" + (folder_ / "crm.db").string()) {}

Process::Outcome Database::init() const {
  return run({"init", "--database", url_, "--maintenance-password-file", "-"},
             std::string(maintenance_password) + "\n");
}

std::string Database::value(const std::string& sql) const {
  using Json = nlohmann::ordered_json;
  Process call({"call", "--database", url_});
  call.ask(R"({"new":"Pradelis.CRM","as":"crm"})");
  call.ask(Json{{"call", "crm.Executar"}, {"args", {sql}}}.dump());
  const Json rows = Json::parse(call.ask(R"({"rows":"crm.rs","limit":1})"));
  if (!rows.contains("rows") || rows["rows"].empty()) return rows.dump();
  const Json& value = rows["rows"][0][0];
  return value.is_string() ? value.get<std::string>() : value.dump();
}

Demonstration::Demonstration() {
  const Process::Outcome created = init();
  if (created.status != 0) throw std::runtime_error("init failed: " + created.complaint);
  const Process::Outcome filled = run({"demo", "--database", url(), "--companies", "40", "--deals", "60"});
  if (filled.status != 0) throw std::runtime_error("demo failed: " + filled.complaint);
  logins_ = filled.output;
  constexpr std::string_view label = "Senha: ";
  const std::size_t begin = logins_.find(label) + label.size();
  password_ = logins_.substr(begin, logins_.find('\n', begin) - begin);
}

}  // namespace pradelis::command
