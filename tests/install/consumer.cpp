#include <iostream>
#include <memory>
#include <string>

#include "automation/invoke.h"
#include "component/registry.h"
#include "component/web_objects.h"
#include "dataaccess/schema/schema.h"
#include "values/convert.h"
#include "values/error.h"

/// Uses an installed copy as a host would: creates a database, supplies the web objects of its thread,
/// and registers a city by name. Prints the city that the database then has.
namespace {

using namespace pradelis;

class Settings final : public component::Application {
 public:
  explicit Settings(std::string database) : database_(std::move(database)) {}
  Variant Value(const std::string& name) override {
    if (name == "dataconn_ConnectionString") return database_;
    return 30;
  }

 private:
  std::string database_;
};

class Context final : public component::ObjectContext {
 public:
  explicit Context(ObjectPtr application) : application_(std::move(application)) {}
  ObjectPtr Item(const std::string&) override { return application_; }

 private:
  ObjectPtr application_;
};

class Host final : public component::AppServer {
 public:
  explicit Host(const std::string& database)
      : context_(std::make_shared<Context>(std::make_shared<Settings>(database))) {}
  component::ObjectContextPtr GetObjectContext() override { return context_; }

 private:
  component::ObjectContextPtr context_;
};

std::string register_city() {
  const ObjectPtr crm = component::create_object("Pradelis.CRM");
  Variant city[] = {1, "11", "", "Campinas", 7};
  automation::invoke(*crm, "Cadastrar_Cidade", automation::Use::Read, {city});
  Variant query[] = {"select nome from item_r where cid = 19 and nome = 'Campinas'"};
  automation::invoke(*crm, "Executar", automation::Use::Read, {query});
  Variant column[] = {"nome"};
  return to_text(automation::default_value(automation::invoke(*crm, "rs", automation::Use::Read, {column})));
}

}  // namespace

int main(int, char** arguments) {
  const std::string database = std::string("sqlite:") + arguments[1];
  try {
    dataaccess::schema::initialise(database, {[] { return std::string("segredo"); }, 1});
    component::set_app_server_factory([&] { return std::make_shared<Host>(database); });
    std::cout << register_city() << '\n';
    return 0;
  } catch (const Error& error) {
    std::cerr << error.number() << ' ' << error.source() << ' ' << error.description() << '\n';
    return 1;
  }
}
