#include "tests/support/database.h"

#include <random>

#include "dataaccess/pool.h"
#include "dataaccess/schema/schema.h"
#include "tests/support/engine.h"
#include "values/convert.h"

namespace pradelis::tests {
namespace {

std::string connection_string_of(const std::filesystem::path& file) {
  return "sqlite:" + file.string() + "?synchronous=off";
}

/// A new database, from which those of the tests are copied: made once for the process, since creating
/// one takes longer than most tests.
class Model {
 public:
  Model() {
    dataaccess::schema::InitOptions options;
    options.maintenance_password = [] { return std::string(maintenance_password); };
    options.password_rounds = 1;
    dataaccess::schema::initialise(connection_string_of(file()), options);
    SideConnection(connection_string_of(file())).run("pragma wal_checkpoint(truncate)");
  }

  std::filesystem::path file() const { return folder_.path() / "modelo.db"; }

 private:
  TemporaryFolder folder_;
};

/// Makes a new database; gives its connection string.
std::string make_database(const std::filesystem::path& file) {
  static const Model model;
  std::filesystem::copy_file(model.file(), file);
  return connection_string_of(file);
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  path_ = std::filesystem::temp_directory_path() /
          ("pradelis-" + std::to_string(random()) + std::to_string(random()));
  std::filesystem::create_directory(path_);
}

TemporaryFolder::~TemporaryFolder() {
  dataaccess::close_idle_connections();
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

SideConnection::SideConnection(const std::string& connection_string)
    : connection_(dataaccess::new_connection()) {
  connection_->set_ConnectionString(connection_string);
  connection_->set_Location(dataaccess::CursorLocation::Client);
  connection_->Open();
}

std::int64_t SideConnection::run(const std::string& sql) {
  std::int64_t rows = 0;
  connection_->Execute(sql, &rows);
  return rows;
}

std::string SideConnection::rows(const std::string& sql) {
  std::string text;
  const char* separator = "";
  const dataaccess::RecordsetPtr found = connection_->Execute(sql);
  for (; !found->Eof(); found->MoveNext(), separator = "\n") {
    text += separator;
    for (std::size_t i = 0; i < found->field_count(); ++i) {
      if (i != 0) text += '|';
      const Variant value = found->value(i);
      text += value.is_null() ? "null" : to_text(value);
    }
  }
  return text;
}

Variant SideConnection::value(const std::string& sql) {
  const dataaccess::RecordsetPtr found = connection_->Execute(sql);
  return found->Eof() ? Variant() : found->value(0);
}

TemporaryDatabase::TemporaryDatabase()
    : on_server_(on_postgresql()
                     ? std::make_unique<PostgresqlDatabase>(PostgresqlDatabase::Content::Initialised)
                     : nullptr),
      connection_string_(on_server_ ? on_server_->connection_string()
                                    : make_database(folder_.path() / "dados.db")),
      side_(connection_string_) {}

}  // namespace pradelis::tests
