#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/class_table.h"
#include "command/json_values.h"
#include "command/script_host.h"

namespace pradelis::command {

/// The dialogue of `pradelis call`: answers requests one by one, and keeps the objects that they name.
/// `docs/calls.md` describes the requests. Used on one thread, that of `host`.
class Dialogue {
 public:
  explicit Dialogue(ScriptHost& host) : host_(host) {}

  /// Answers one request (JSON text) with one line of JSON, without line break. Failures are answers
  /// too; none is thrown.
  std::string answer(std::string_view request);

  /// Whether every request so far was understood.
  bool all_understood() const noexcept { return all_understood_; }

 private:
  /// A member of an object that a request names, such as "crm.rs.EOF".
  struct Target {
    ObjectPtr object;
    std::string member;
  };

  Json answer_to(const Json& request);
  Json create(const Json& request);
  Json call(const Json& request);
  Json get(const Json& request);
  Json read(const Json& request, const char* verb, bool with_arguments);
  Json set(const Json& request);
  Json rows(const Json& request);
  Json set_session(const Json& request);
  Json set_application(const Json& request);
  Json written(const Json& request);
  Json release(const Json& request);

  ObjectPtr object_of(const std::string& name) const;
  Target target_of(const std::string& path) const;
  Variant value_of(const Json& json) const;
  std::vector<Variant> arguments_of(const Json& request) const;
  void bind(const std::string& name, ObjectPtr object);

  ScriptHost& host_;
  std::map<std::string, ObjectPtr> objects_;
  bool all_understood_ = true;
};

}  // namespace pradelis::command
