#pragma once

#include "command/script_host.h"
#include "tests/com/support/page_objects.h"

namespace pradelis::test {

/// The registered library, reached as scripts reach it: objects are created by their names and called by
/// name alone, with variables for arguments.
class WindowsHost final : public command::ScriptHost {
 public:
  /// The connection settings of `page`'s application lead to `database`. `page` is the one that the library
  /// is told of.
  WindowsHost(PageObjects& page, const std::string& database);

  ObjectPtr create(const std::string& program_identifier) override;
  Variant invoke(Object& object, std::string_view member, automation::Use use,
                 std::span<Variant> arguments) override;
  command::Json rows(const ObjectPtr& recordset, std::int64_t limit) override;
  void set_application(const std::string& name, const Variant& value) override;
  void set_session(const std::string& name, const Variant& value) override;
  std::string take_written() override;

 private:
  PageObjects& page_;
};

}  // namespace pradelis::test
