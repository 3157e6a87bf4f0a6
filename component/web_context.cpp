#include <memory>
#include <string>
#include <utility>

#include "component/thread_state.h"
#include "component/web_objects.h"
#include "values/error.h"

namespace pradelis::component {

namespace {

ObjectContextPtr object_context() {
  ThreadState& state = thread_state();
  if (!state.app_server && state.app_server_factory) state.app_server = state.app_server_factory();
  if (!state.app_server) raise(error_number::cannot_create_object);
  ObjectContextPtr context = state.app_server->GetObjectContext();
  if (!context) raise(error_number::object_not_set);
  return context;
}

template <class Intrinsic>
void fetch(std::shared_ptr<Intrinsic>& holder, const std::string& name) {
  if (holder) return;
  holder = std::dynamic_pointer_cast<Intrinsic>(object_context()->Item(name));
  if (!holder) raise(error_number::type_mismatch);
}

}  // namespace

void set_app_server_factory(std::function<AppServerPtr()> factory) {
  ThreadState& state = thread_state();
  state.app_server_factory = std::move(factory);
  state.app_server.reset();
}

void GetApplication() { fetch(thread_state().application, "Application"); }

void GetResponse() { fetch(thread_state().response, "Response"); }

void GetSession() { fetch(thread_state().session, "Session"); }

void ReleaseIntrinsics() noexcept {
  ThreadState& state = thread_state();
  state.application.reset();
  state.session.reset();
  state.server.reset();
  state.response.reset();
  state.request.reset();
}

}  // namespace pradelis::component
