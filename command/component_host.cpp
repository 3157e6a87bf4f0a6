#include "command/component_host.h"

#include "automation/invoke.h"
#include "command/json_rows.h"
#include "component/registry.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::command {
namespace {

class Context final : public component::ObjectContext {
 public:
  Context(ObjectPtr application, ObjectPtr session, ObjectPtr response)
      : application_(std::move(application)), session_(std::move(session)), response_(std::move(response)) {}

  ObjectPtr Item(const std::string& name) override {
    if (equal_ignoring_case(name, "Application")) return application_;
    if (equal_ignoring_case(name, "Session")) return session_;
    if (equal_ignoring_case(name, "Response")) return response_;
    raise(error_number::invalid_argument);
  }

 private:
  ObjectPtr application_, session_, response_;
};

class Server final : public component::AppServer {
 public:
  explicit Server(component::ObjectContextPtr context) : context_(std::move(context)) {}
  component::ObjectContextPtr GetObjectContext() override { return context_; }

 private:
  component::ObjectContextPtr context_;
};

}  // namespace

ComponentHost::ComponentHost(const std::string& database)
    : application_(std::make_shared<NamedValues<component::Application>>()),
      session_(std::make_shared<NamedValues<component::Session>>()),
      response_(std::make_shared<CollectedResponse>()) {
  application_->set("dataconn_ConnectionString", database);
  application_->set("dataconn_ConnectionTimeout", std::int32_t{15});  // seconds
  application_->set("dataconn_CommandTimeout", std::int32_t{30});     // seconds
  application_->set("Link_local", "");
  component::set_app_server_factory([context = std::make_shared<Context>(application_, session_, response_)] {
    return std::make_shared<Server>(context);
  });
}

ObjectPtr ComponentHost::create(const std::string& program_identifier) {
  return component::create_object(program_identifier);
}

Variant ComponentHost::invoke(Object& object, std::string_view member, automation::Use use,
                              std::span<Variant> arguments) {
  return automation::invoke(object, member, use, {arguments});
}

Json ComponentHost::rows(const ObjectPtr& recordset, std::int64_t limit) {
  return rows_to_json(recordset, limit);
}

void ComponentHost::set_application(const std::string& name, const Variant& value) {
  application_->set(name, value);
}

void ComponentHost::set_session(const std::string& name, const Variant& value) { session_->set(name, value); }

std::string ComponentHost::take_written() { return response_->take(); }

}  // namespace pradelis::command
