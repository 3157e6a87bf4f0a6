#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "automation/class_table.h"
#include "command/json_values.h"

namespace pradelis::command {

/// What a dialogue works on: objects that are used by name, and the web server around them, which has one
/// application, one visitor and one page. It belongs to the thread that made it.
class ScriptHost {
 public:
  virtual ~ScriptHost() = default;

  /// A new object. Raises 429 for an unknown class, and what its creation raises.
  virtual ObjectPtr create(const std::string& program_identifier) = 0;

  /// Uses one member of an object; what `automation::invoke` says of arguments and failures holds here.
  virtual Variant invoke(Object& object, std::string_view member, automation::Use use,
                         std::span<Variant> arguments) = 0;

  /// At most `limit` rows (or `all_rows`) of a recordset from its current row on, which it is moved behind,
  /// with the names and types of its columns. Raises error 13 for an object that is no recordset, and what
  /// reading raises.
  virtual Json rows(const ObjectPtr& recordset, std::int64_t limit) = 0;
  static constexpr std::int64_t all_rows = -1;

  virtual void set_application(const std::string& name, const Variant& value) = 0;
  virtual void set_session(const std::string& name, const Variant& value) = 0;

  /// What was written to the page since it was last taken.
  virtual std::string take_written() = 0;
};

}  // namespace pradelis::command
