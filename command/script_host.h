#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "automation/class_table.h"
#include "component/web_objects.h"

namespace pradelis::command {

/// Named values, found whatever the case of their names.
template <class Interface>
class NamedValues final : public Interface {
 public:
  Variant Value(const std::string& name) override {
    const auto found = values_.find(name);
    return found == values_.end() ? Variant() : found->second;
  }
  void set(const std::string& name, Variant value) { values_.insert_or_assign(name, std::move(value)); }

 private:
  std::unordered_map<std::string, Variant, automation::HashIgnoringCase, automation::EqualIgnoringCase>
      values_;
};

/// Collects what is written to a page.
class CollectedResponse final : public component::Response {
 public:
  void Write(const std::string& html) override { written_ += html; }
  /// What was written since it was last taken.
  std::string take() { return std::exchange(written_, {}); }

 private:
  std::string written_;
};

/// The web host of a script: one application, one visitor, one page, for as long as the script runs.
class ScriptHost {
 public:
  /// Becomes the calling thread's host; the application's connection settings lead to `database`.
  explicit ScriptHost(const std::string& database);

  NamedValues<component::Application>& application() { return *application_; }
  NamedValues<component::Session>& session() { return *session_; }
  CollectedResponse& response() { return *response_; }

 private:
  std::shared_ptr<NamedValues<component::Application>> application_;
  std::shared_ptr<NamedValues<component::Session>> session_;
  std::shared_ptr<CollectedResponse> response_;
};

}  // namespace pradelis::command
