#pragma once

#include <memory>
#include <string>

#include "component/web_objects.h"
#include "values/variant.h"

namespace pradelis::tests {

/// A web server for the thread that creates it: application variables, the values of one session, and a
/// page that collects what is written. Ends the thread's shared state when it goes; no object of the
/// component may be alive then.
class WebHost {
 public:
  /// The application's connection settings lead to the database of this connection string.
  explicit WebHost(const std::string& connection_string);
  ~WebHost();
  WebHost(const WebHost&) = delete;
  WebHost& operator=(const WebHost&) = delete;

  void set_application(const std::string& name, const Variant& value);
  void set_session(const std::string& name, const Variant& value);
  /// Logs a user in who may see this list of users.
  void set_visible_users(const Variant& list);
  void clear_session();
  /// From now on the context gives `object` for the item `name`.
  void replace_item(const std::string& name, ObjectPtr object);

  /// What was written since last asked.
  std::string take_written();
  /// How often an object context was asked for.
  int contexts_asked() const;

  struct State;

 private:
  std::shared_ptr<State> state_;
};

}  // namespace pradelis::tests
