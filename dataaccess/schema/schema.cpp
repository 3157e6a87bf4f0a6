#include "dataaccess/schema/schema.h"

#include <set>
#include <string_view>
#include <vector>

#include "dataaccess/passwords.h"
#include "dataaccess/schema/ddl.h"
#include "dataaccess/schema/fixed.h"
#include "dataaccess/schema/fixed_rows.h"
#include "dataaccess/thread_connection.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::dataaccess::schema {
namespace {

constexpr std::string_view installation_table = "instalacao";

using Names = std::set<std::string, std::less<>>;

/// What a database holds, with names in lower case.
struct Catalogue {
  Names tables, views, indexes;
};

[[noreturn]] void refuse(const std::string& reason) {
  raise(error_number::database_failed, concat("O banco de dados ", reason, ". Nada foi alterado."));
}

QLCConnPtr connect(const std::string& connection_string) {
  QLCConnPtr conn = new_thread_connection();
  conn->set_ConnectionString(creating_connection_string(connection_string));
  return conn;
}

/// One run of `initialise` on its connection.
class Initialisation {
 public:
  Initialisation(const std::string& connection_string, const InitOptions& options);
  InitOutcome run();

 private:
  void execute(const std::string& sql);
  RecordsetPtr query(const std::string& sql);
  bool has_row(const std::string& table, const std::string& condition);

  Catalogue read_catalogue();
  std::int32_t read_version();
  void refuse_foreign(std::string_view name);
  void refuse_unfit();
  void ask_password();

  InitOutcome bring_up_to_date();
  void add_installation_row();
  void add_tables();
  void add_columns(const Table& table);
  void add_indexes(const Table& table);
  void replace_views();
  void add_rows(const std::vector<FixedRow>& rows);
  void add_maintenance_user();

  QLCConnPtr conn_;
  const Engine& engine_;
  const InitOptions& options_;
  Catalogue catalogue_;
  std::string maintenance_password_;
};

Initialisation::Initialisation(const std::string& connection_string, const InitOptions& options)
    : conn_(connect(connection_string)),
      engine_(engine_of(connection_of(*conn_).live().connection().dialect())),
      options_(options) {}

void Initialisation::execute(const std::string& sql) { conn_->Conexao()->Execute(sql); }

RecordsetPtr Initialisation::query(const std::string& sql) {
  return conn_->AbrirRecordset(sql, CursorType::Static, LockType::ReadOnly, CursorLocation::Server, 0);
}

bool Initialisation::has_row(const std::string& table, const std::string& condition) {
  return !query(concat("select 1 from ", table, " where ", condition))->Eof();
}

Catalogue Initialisation::read_catalogue() {
  Catalogue catalogue;
  for (RecordsetPtr entries = query(std::string(engine_.catalogue)); !entries->Eof(); entries->MoveNext()) {
    const std::string kind = to_text(entries->value(0));
    Names& names = kind == "table" ? catalogue.tables : kind == "view" ? catalogue.views : catalogue.indexes;
    names.insert(to_lower(to_text(entries->value(1))));
  }
  return catalogue;
}

/// The version of the database, 0 for an empty one (and for one whose creation was interrupted).
/// Refuses databases that are not this system's, and newer ones.
std::int32_t Initialisation::read_version() {
  catalogue_ = read_catalogue();
  if (catalogue_.tables.contains(installation_table)) {
    const RecordsetPtr row = query("select versao from instalacao where oid = 1");
    if (!row->Eof()) {
      const std::int32_t version = to_int32(row->value(0));
      if (version > current_version)
        refuse(concat("é da versão ", version, ", mais nova do que este programa"));
      return version;
    }
  }
  for (const Table& table : tables()) refuse_foreign(table.name);
  for (const View& view : views()) refuse_foreign(view.name);
  return 0;
}

void Initialisation::refuse_foreign(std::string_view name) {
  if (catalogue_.tables.contains(name) || catalogue_.views.contains(name)) {
    refuse(concat("já tem ", name, " e não foi criado por este sistema"));
  }
}

void Initialisation::refuse_unfit() {
  if (engine_.objection.empty()) return;
  const Variant objection = query(std::string(engine_.objection))->value(0);
  if (!objection.is_null() && !to_text(objection).empty()) refuse(to_text(objection));
}

InitOutcome Initialisation::run() {
  refuse_unfit();
  const std::int32_t before = read_version();
  if (before == current_version) return {InitOutcome::Kind::UpToDate, before, before};
  if (before == 0) ask_password();
  if (!engine_.begin.empty()) execute(std::string(engine_.begin));
  try {
    if (!engine_.wait.empty()) execute(std::string(engine_.wait));
    const InitOutcome outcome = bring_up_to_date();
    if (!engine_.commit.empty()) execute(std::string(engine_.commit));
    return outcome;
  } catch (...) {
    try {
      if (!engine_.rollback.empty()) execute(std::string(engine_.rollback));
    } catch (const Error&) {
      // The failure that ended the transaction is the one to report.
    }
    throw;
  }
}

void Initialisation::ask_password() {
  if (options_.maintenance_password) maintenance_password_ = options_.maintenance_password();
  if (maintenance_password_.empty()) {
    raise(error_number::invalid_argument, "A senha do usuário de manutenção não pode ser vazia.");
  }
}

InitOutcome Initialisation::bring_up_to_date() {
  // Again, now that nobody else can write: another process may have been faster.
  const std::int32_t before = read_version();
  if (before == current_version) return {InitOutcome::Kind::UpToDate, before, before};
  if (!engine_.preparation.empty()) execute(std::string(engine_.preparation));
  add_tables();
  replace_views();
  add_rows(fixed_rows());
  if (before == 0) add_maintenance_user();
  execute(concat("update instalacao set versao = ", current_version, " where oid = 1"));
  return {before == 0 ? InitOutcome::Kind::Created : InitOutcome::Kind::Upgraded, before, current_version};
}

/// The row comes before all other tables: it says that they are this system's, also when their creation
/// is interrupted. Its version is written last.
void Initialisation::add_installation_row() {
  const PasswordSettings settings = new_password_settings(options_.password_rounds);
  add_rows({{installation_table,
             {{"oid", 1},
              {"versao", 0},
              {"sal", settings.salt},
              {"rodadas", settings.rounds},
              {"proximooid", fixed::first_free_oid}}}});
}

void Initialisation::add_tables() {
  for (const Table& table : tables()) {
    if (catalogue_.tables.contains(table.name)) {
      add_columns(table);
    } else {
      execute(create_table(table, engine_));
    }
    if (table.name == installation_table) add_installation_row();
    add_indexes(table);
  }
}

void Initialisation::add_columns(const Table& table) {
  const RecordsetPtr rows = query(concat("select * from ", table.name, " where 1 = 0"));
  Names present;
  for (std::size_t i = 0; i < rows->field_count(); ++i) present.insert(to_lower(rows->field_name(i)));
  for (const Column& column : table.columns) {
    if (!present.contains(column.name)) execute(add_column(table, column, engine_));
  }
}

void Initialisation::add_indexes(const Table& table) {
  for (const Index& index : table.indexes) {
    if (catalogue_.indexes.contains(index.name)) continue;
    for (const std::string& statement : create_index(table, index, engine_)) execute(statement);
  }
}

void Initialisation::replace_views() {
  for (const View& view : views()) {
    if (catalogue_.views.contains(view.name)) execute(drop_view(view));
    execute(create_view(view));
  }
}

void Initialisation::add_rows(const std::vector<FixedRow>& rows) {
  for (const FixedRow& row : rows) {
    const auto& [key, value] = row.values.front();
    if (has_row(std::string(row.table), concat(key, " = ", value))) continue;
    const RecordsetPtr table =
        conn_->AbrirTabela(std::string(row.table), CursorType::Dynamic, LockType::Optimistic);
    table->AddNew();
    for (const auto& [name, content] : row.values) table->set(name, content);
    table->Update();
    table->Close();
  }
}

void Initialisation::add_maintenance_user() {
  const RecordsetPtr row = query("select sal, rodadas from instalacao where oid = 1");
  const PasswordSettings settings{to_text(row->value(0)), to_int32(row->value(1))};
  add_rows(maintenance_rows(encode_password(fixed::maintenance_name + maintenance_password_, settings)));
}

}  // namespace

InitOutcome initialise(const std::string& connection_string, const InitOptions& options) {
  return Initialisation(connection_string, options).run();
}

}  // namespace pradelis::dataaccess::schema
