#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "values/date.h"
#include "values/object.h"

namespace pradelis {

/// What a variant holds, in the order of the alternatives that hold it.
enum class VariantType : std::uint8_t {
  Empty,    ///< never given a value
  Null,     ///< known to have no value, as a database's null
  Missing,  ///< an omitted optional argument
  Boolean,
  UInt8,
  Int16,
  Int32,
  Int64,
  Double,
  Date,
  Text,
  Bytes,
  Array,
  Object,  ///< a reference, possibly to no object
};

/// Content of files and other binary columns.
using Bytes = std::vector<std::byte>;

/// A value whose type is known only at run time, as pages pass and receive it.
/// Texts are UTF-8. Arrays have lower bound 0 and are copied with the variant that holds them.
class Variant {
 public:
  using Type = VariantType;
  using Array = std::vector<Variant>;

  Variant() noexcept = default;
  Variant(bool value) noexcept : value_(value) {}
  Variant(std::uint8_t value) noexcept : value_(value) {}
  Variant(std::int16_t value) noexcept : value_(value) {}
  Variant(std::int32_t value) noexcept : value_(value) {}
  Variant(std::int64_t value) noexcept : value_(value) {}
  Variant(double value) noexcept : value_(value) {}
  Variant(pradelis::Date value) noexcept : value_(value) {}
  Variant(std::string value) noexcept : value_(std::move(value)) {}
  Variant(std::string_view value) : value_(std::string(value)) {}
  Variant(const void*) = delete;  // no pointer is a Boolean
  Variant(const char* value) : value_(std::string(value)) {}
  Variant(pradelis::Bytes value) noexcept : value_(std::move(value)) {}
  Variant(Array value) noexcept : value_(std::move(value)) {}
  Variant(ObjectPtr value) noexcept : value_(std::move(value)) {}

  static Variant null() noexcept { return Variant(std::in_place_type<NullTag>); }
  static Variant missing() noexcept { return Variant(std::in_place_type<MissingTag>); }

  Type type() const noexcept { return static_cast<Type>(value_.index()); }
  bool is(Type type) const noexcept { return this->type() == type; }
  bool is_null() const noexcept { return is(Type::Null); }
  bool is_empty() const noexcept { return is(Type::Empty); }
  bool is_missing() const noexcept { return is(Type::Missing); }

  /// The held value of exactly this C++ type (bool, std::int32_t, double, Date, std::string, Bytes,
  /// Array, ObjectPtr, ...). Nothing is converted; asking for a type that is not held raises
  /// error 13. The functions of `values/convert.h` convert.
  template <class T>
  const T& get() const&;
  template <class T>
  T& get() &;
  /// Of a variant that ends: the value is moved out of it.
  template <class T>
  T get() &&;

  /// Same type and same value; objects compare by identity. Not the platform's "=" operator.
  friend bool operator==(const Variant&, const Variant&) = default;

 private:
  struct NullTag {
    friend bool operator==(NullTag, NullTag) = default;
  };
  struct MissingTag {
    friend bool operator==(MissingTag, MissingTag) = default;
  };
  using Storage =
      std::variant<std::monostate, NullTag, MissingTag, bool, std::uint8_t, std::int16_t, std::int32_t,
                   std::int64_t, double, pradelis::Date, std::string, pradelis::Bytes, Array, ObjectPtr>;

  template <class T>
  explicit Variant(std::in_place_type_t<T> type) noexcept : value_(type) {}

  Storage value_;
};

/// Raises error 13: the way out of `Variant::get` when another type is held.
[[noreturn]] void raise_type_mismatch();

template <class T>
const T& Variant::get() const& {
  if (const T* held = std::get_if<T>(&value_)) return *held;
  raise_type_mismatch();
}

template <class T>
T& Variant::get() & {
  if (T* held = std::get_if<T>(&value_)) return *held;
  raise_type_mismatch();
}

template <class T>
T Variant::get() && {
  if (T* held = std::get_if<T>(&value_)) return std::move(*held);
  raise_type_mismatch();
}

}  // namespace pradelis
