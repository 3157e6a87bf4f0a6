#include "site/database_sessions.h"

#include <utility>

#include "component/crm.h"
#include "site/rows.h"
#include "site/secrets.h"
#include "site/variant_text.h"
#include "values/convert.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

using component::CRM;

std::string key_of(const std::string& name) { return digest_of(name, "sessao"); }

std::string quoted(std::string_view text) { return concat("'", replace_all(text, "'", "''"), "'"); }

/// Runs a statement; gives the number of rows that it changed.
std::int64_t change(CRM& crm, const std::string& sql) {
  std::int64_t rows = 0;
  crm.QLCConn()->Conexao()->Execute(sql, &rows);
  return rows;
}

std::string kept(const User& user) {
  Variant::Array groups(user.groups.begin(), user.groups.end());
  return to_kept_text(Variant::Array{
      user.person, user.name, user.login, user.usage_session ? Variant(*user.usage_session) : Variant::null(),
      user.information, std::move(groups), user.maintenance, user.team_version});
}

User from_elements(const Variant::Array& elements) {
  auto next = elements.begin();
  User user;
  user.person = (next++)->get<std::int32_t>();
  user.name = (next++)->get<std::string>();
  user.login = (next++)->get<std::string>();
  if (const Variant& usage = *next++; !usage.is_null()) user.usage_session = usage.get<std::int32_t>();
  user.information = *next++;
  for (const Variant& group : (next++)->get<Variant::Array>()) {
    user.groups.push_back(group.get<std::int32_t>());
  }
  user.maintenance = (next++)->get<bool>();
  user.team_version = next->get<std::int32_t>();
  return user;
}

/// Null for what another version of this program has kept in another form: its visitor logs in again.
UserPtr restored(const std::string& text) {
  const auto value = from_kept_text(text);
  constexpr std::size_t elements = 8;
  if (!value || !value->is(VariantType::Array) || value->get<Variant::Array>().size() != elements) return {};
  try {
    return std::make_shared<const User>(from_elements(value->get<Variant::Array>()));
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

DatabaseSessions::Minutes DatabaseSessions::present_minute() {
  const auto since = std::chrono::system_clock::now().time_since_epoch();
  return static_cast<Minutes>(std::chrono::duration_cast<std::chrono::minutes>(since).count());
}

std::string DatabaseSessions::open(const UserPtr& user) {
  CRM crm;
  std::string name = random_token();
  change(crm, concat("insert into sessaodosite (chave, rpessoa, usada, dados) values (", quoted(key_of(name)),
                     ", ", user->person, ", ", now_(), ", ", quoted(kept(*user)), ")"));
  return name;
}

std::optional<Session> DatabaseSessions::find(const std::string& name) {
  if (name.empty()) return std::nullopt;
  CRM crm;
  const std::string key = quoted(key_of(name));
  Session session;
  Minutes used = 0;
  each_row(crm,
           concat("select s.usada, s.dados, s.mensagem, i.equipe from sessaodosite s, instalacao i"
                  " where s.chave = ",
                  key, " and i.oid = 1"),
           1, [&](const Row& row) {
             used = row.id(0);
             session = {restored(row.text(1)), form_token(name), row.text(2), row.id(3)};
           });
  if (!session.user || used < oldest_use()) return std::nullopt;
  if (used < now_()) {
    change(crm, concat("update sessaodosite set usada = ", now_(), " where chave = ", key, " and usada < ",
                       now_()));
  }
  return session;
}

void DatabaseSessions::replace_user(const std::string& name, const UserPtr& user) {
  CRM crm;
  change(crm, concat("update sessaodosite set dados = ", quoted(kept(*user)),
                     " where chave = ", quoted(key_of(name))));
}

UserPtr DatabaseSessions::close(const std::string& name) {
  if (name.empty()) return nullptr;
  CRM crm;
  const std::string key = key_of(name);
  std::string user;
  each_row(crm, concat("select dados from sessaodosite where chave = ", quoted(key)), 1,
           [&](const Row& row) { user = row.text(0); });
  return user.empty() ? nullptr : close(crm, key, user, "");
}

/// Only one of several hosts deletes the row: it alone goes on to end the usage session.
UserPtr DatabaseSessions::close(CRM& crm, const std::string& key, const std::string& kept,
                                const std::string& condition) {
  const bool ended =
      change(crm, concat("delete from sessaodosite where chave = ", quoted(key), condition)) != 0;
  return ended ? restored(kept) : nullptr;
}

void DatabaseSessions::leave_message(const std::string& name, const std::string& message) {
  CRM crm;
  change(crm, concat("update sessaodosite set mensagem = ", message.empty() ? "null" : quoted(message),
                     " where chave = ", quoted(key_of(name))));
}

std::vector<UserPtr> DatabaseSessions::close_idle() {
  CRM crm;
  const std::string condition = concat("usada < ", oldest_use());
  std::vector<std::pair<std::string, std::string>> idle;
  each_row(crm, concat("select chave, dados from sessaodosite where ", condition), 0,
           [&](const Row& row) { idle.emplace_back(row.text(0), row.text(1)); });
  std::vector<UserPtr> users;
  for (const auto& [key, user] : idle) {
    if (UserPtr ended = close(crm, key, user, " and " + condition)) users.push_back(std::move(ended));
  }
  return users;
}

std::int32_t DatabaseSessions::team_version() {
  CRM crm;
  const Variant version = single_value(crm, "select equipe from instalacao where oid = 1");
  return version.is_null() ? 0 : to_int32(version);
}

void DatabaseSessions::team_changed() {
  CRM crm;
  change(crm, "update instalacao set equipe = isnull(equipe, 0) + 1 where oid = 1");
}

}  // namespace pradelis::site
