#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace pradelis {

/// Numbers of the failures that the platform defines. Business refusals use 1001.
namespace error_number {
inline constexpr std::int32_t invalid_argument = 5;
inline constexpr std::int32_t overflow = 6;
inline constexpr std::int32_t out_of_memory = 7;
inline constexpr std::int32_t subscript_out_of_range = 9;
inline constexpr std::int32_t type_mismatch = 13;
inline constexpr std::int32_t out_of_stack = 28;
inline constexpr std::int32_t object_not_set = 91;
inline constexpr std::int32_t invalid_use_of_null = 94;
inline constexpr std::int32_t cannot_create_object = 429;
inline constexpr std::int32_t no_such_member = 438;
inline constexpr std::int32_t named_argument_not_found = 448;
inline constexpr std::int32_t argument_not_optional = 449;
inline constexpr std::int32_t wrong_number_of_arguments = 450;
inline constexpr std::int32_t business_refusal = 1001;

inline constexpr std::int32_t no_current_row = 3021;
inline constexpr std::int32_t not_writable = 3251;
inline constexpr std::int32_t no_such_field = 3265;
inline constexpr std::int32_t closed_object = 3704;
inline constexpr std::int32_t wrong_statement = -2147217900;
inline constexpr std::int32_t value_does_not_fit = -2147217887;
inline constexpr std::int32_t constraint_refused = -2147217873;
inline constexpr std::int32_t timed_out = -2147217871;
inline constexpr std::int32_t no_such_table = -2147217865;
inline constexpr std::int32_t changed_by_other = -2147217864;
inline constexpr std::int32_t database_failed = -2147467259;
}  // namespace error_number

/// The one exception type of the component: what a page sees as a raised error.
class Error : public std::exception {
 public:
  Error(std::int32_t number, std::string source, std::string description)
      : number_(number), source_(std::move(source)), description_(std::move(description)) {}

  std::int32_t number() const noexcept { return number_; }
  /// Who raised it, such as "Pradelis.CRM.Logar"; empty for failures below the component.
  const std::string& source() const noexcept { return source_; }
  /// Portuguese text (UTF-8).
  const std::string& description() const noexcept { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string source_;
  std::string description_;
};

/// The platform's Portuguese text for one of its own numbers ("Estouro" for 6), or the general text
/// for numbers that it does not know.
std::string_view platform_text(std::int32_t number) noexcept;

/// Raises `number` with the platform's own text and an empty source.
[[noreturn]] void raise(std::int32_t number);

/// Raises `number` with `description` and an empty source.
[[noreturn]] void raise(std::int32_t number, std::string description);

}  // namespace pradelis
