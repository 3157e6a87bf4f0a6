#pragma once

#include <string>

#include "automation/table_builder.h"

namespace pradelis::automation {

/// An object with one member for each way in which an argument can travel.
class Probe : public Object {
 public:
  std::string text(const std::string& value) { return value; }
  std::int16_t small(std::int16_t value) { return value; }
  std::int32_t number(std::int32_t value) { return value; }
  std::int32_t with_default(std::int32_t value) { return value; }
  Variant any(const Variant& value) { return value; }
  Variant any_with_default(const Variant& value) { return value; }
  bool after(const Date& when) { return when.serial > 0; }

  /// Writes to both, and fails when `fail`.
  void write(std::int16_t& step, Variant& answer, bool fail) {
    step = 4;
    answer = "escrito";
    if (fail) raise(1001, "recusado");
  }
  /// Appends to what it receives.
  std::string append(std::string& text) { return text += "!"; }
  std::string join(const std::string& first, const std::string& second, const std::string& third) {
    return first + "-" + second + "-" + third;
  }
};

template <>
inline constexpr std::string_view interface_name<Probe> = "Probe";

inline const ClassTable& probe_table() {
  static const ClassTable table =
      TableBuilder<Probe>()
          .method<&Probe::text>("Text", ref("value"))
          .method<&Probe::small>("Small", ref("value"))
          .method<&Probe::number>("Number", val("value"))
          .method<&Probe::with_default>("WithDefault", ref("value", 7))
          .method<&Probe::any>("Any", ref("value"))
          .method<&Probe::any_with_default>("AnyWithDefault", ref("value", "padrão"))
          .method<&Probe::after>("After", ref("when"))
          .method<&Probe::write>("Write", ref("step"), ref("answer"), val("fail", false))
          .method<&Probe::append>("Append", ref("text"))
          .method<&Probe::join>("Join", val("first"), val("second", "2"), val("third", "3"))
          .build();
  return table;
}

}  // namespace pradelis::automation
