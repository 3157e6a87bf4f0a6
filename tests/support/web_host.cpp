#include "tests/support/web_host.h"

#include <map>
#include <utility>

#include "component/thread_state.h"
#include "values/text.h"

namespace pradelis::tests {

namespace {

/// Named values that match whatever their case, as web applications and sessions keep them.
template <class Kind>
class Values : public Kind {
 public:
  Variant Value(const std::string& name) override {
    const auto found = values_.find(to_lower(name));
    return found == values_.end() ? Variant() : found->second;
  }
  void set(const std::string& name, const Variant& value) { values_[to_lower(name)] = value; }
  void clear() { values_.clear(); }

 private:
  std::map<std::string, Variant> values_;
};

class Page : public component::Response {
 public:
  void Write(const std::string& html) override { written_ += html; }
  std::string take() { return std::exchange(written_, {}); }

 private:
  std::string written_;
};

}  // namespace

struct WebHost::State {
  std::shared_ptr<Values<component::Application>> application =
      std::make_shared<Values<component::Application>>();
  std::shared_ptr<Values<component::Session>> session = std::make_shared<Values<component::Session>>();
  std::shared_ptr<Page> page = std::make_shared<Page>();
  std::map<std::string, ObjectPtr> items;
  int contexts_asked = 0;
};

namespace {

class Context : public component::ObjectContext {
 public:
  explicit Context(std::shared_ptr<WebHost::State> state) : state_(std::move(state)) {}
  ObjectPtr Item(const std::string& name) override { return state_->items.at(name); }

 private:
  std::shared_ptr<WebHost::State> state_;
};

class Server : public component::AppServer {
 public:
  explicit Server(std::shared_ptr<WebHost::State> state) : state_(std::move(state)) {}
  component::ObjectContextPtr GetObjectContext() override {
    ++state_->contexts_asked;
    return std::make_shared<Context>(state_);
  }

 private:
  std::shared_ptr<WebHost::State> state_;
};

}  // namespace

WebHost::WebHost(const std::string& connection_string) : state_(std::make_shared<State>()) {
  state_->items = {
      {"Application", state_->application}, {"Session", state_->session}, {"Response", state_->page}};
  set_application("dataconn_ConnectionTimeout", std::int16_t{15});
  set_application("dataconn_CommandTimeout", std::int16_t{30});
  set_application("dataconn_ConnectionString", connection_string);
  component::set_app_server_factory([state = state_] { return std::make_shared<Server>(state); });
}

WebHost::~WebHost() { component::reset_thread_state(); }

void WebHost::set_application(const std::string& name, const Variant& value) {
  state_->application->set(name, value);
}

void WebHost::set_session(const std::string& name, const Variant& value) {
  state_->session->set(name, value);
}

void WebHost::set_visible_users(const Variant& list) {
  Variant::Array information(12);
  information[4] = list;
  set_session("InformacoesUsuario", information);
}

void WebHost::clear_session() { state_->session->clear(); }

void WebHost::replace_item(const std::string& name, ObjectPtr object) {
  state_->items[name] = std::move(object);
}

std::string WebHost::take_written() { return state_->page->take(); }

int WebHost::contexts_asked() const { return state_->contexts_asked; }

}  // namespace pradelis::tests
