#include "site/apartment.h"

#include <memory>
#include <utility>

#include "component/web_objects.h"
#include "site/component_html.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

thread_local Apartment* current = nullptr;

Apartment& serving() {
  if (current == nullptr) raise(error_number::object_not_set);
  return *current;
}

class Application : public component::Application {
 public:
  Variant Value(const std::string& name) override {
    const ApplicationSettings& settings = serving().settings();
    if (equal_ignoring_case(name, "dataconn_ConnectionString")) return settings.connection_string;
    if (equal_ignoring_case(name, "dataconn_ConnectionTimeout")) return settings.connection_timeout;
    if (equal_ignoring_case(name, "dataconn_CommandTimeout")) return settings.command_timeout;
    if (equal_ignoring_case(name, "Link_local")) return "/assets";
    return {};
  }
};

class Session : public component::Session {
 public:
  Variant Value(const std::string& name) override { return serving().session_value(name); }
};

class Response : public component::Response {
 public:
  void Write(const std::string& html) override { serving().write(html); }
};

class Context : public component::ObjectContext {
 public:
  ObjectPtr Item(const std::string& name) override {
    if (equal_ignoring_case(name, "Application")) return std::make_shared<Application>();
    if (equal_ignoring_case(name, "Session")) return std::make_shared<Session>();
    if (equal_ignoring_case(name, "Response")) return std::make_shared<Response>();
    raise(error_number::invalid_argument);
  }
};

class AppServer : public component::AppServer {
 public:
  component::ObjectContextPtr GetObjectContext() override { return std::make_shared<Context>(); }
};

}  // namespace

Apartment::Apartment(const ApplicationSettings& settings) : settings_(settings) {
  component::set_app_server_factory([] { return std::make_shared<AppServer>(); });
  current = this;
}

Apartment::~Apartment() { current = nullptr; }

Variant Apartment::session_value(const std::string& name) const {
  if (information_ == nullptr || !equal_ignoring_case(name, "InformacoesUsuario")) return {};
  return *information_;
}

std::string take_component_html() { return serving().take_written(); }

std::string Apartment::take_written() { return std::exchange(written_, {}); }

}  // namespace pradelis::site
