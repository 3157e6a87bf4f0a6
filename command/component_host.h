#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include "command/script_host.h"
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

/// The component in this process, and a web server for it.
class ComponentHost final : public ScriptHost {
 public:
  /// Becomes the calling thread's host; the application's connection settings lead to `database`.
  explicit ComponentHost(const std::string& database);

  ObjectPtr create(const std::string& program_identifier) override;
  Variant invoke(Object& object, std::string_view member, automation::Use use,
                 std::span<Variant> arguments) override;
  Json rows(const ObjectPtr& recordset, std::int64_t limit) override;
  void set_application(const std::string& name, const Variant& value) override;
  void set_session(const std::string& name, const Variant& value) override;
  std::string take_written() override;

 private:
  std::shared_ptr<NamedValues<component::Application>> application_;
  std::shared_ptr<NamedValues<component::Session>> session_;
  std::shared_ptr<CollectedResponse> response_;
};

}  // namespace pradelis::command
