#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "automation/value_type.h"
#include "values/object.h"
#include "values/variant.h"

/// The interface of every class, as data: what a caller by name, a type library or an adapter to
/// another object system has to know.
namespace pradelis::automation {

enum class MemberKind : std::uint8_t {
  Method,
  Get,  ///< reads a property
  Let,  ///< gives a property a value
  Set,  ///< gives a property a reference to an object
};

struct Parameter {
  std::string_view name;
  ValueType type = ValueType::Variant;  ///< as declared in the interface
  ValueType passed =
      ValueType::Variant;      ///< what the method takes: `type`, unless it judges the value itself
  std::string_view type_name;  ///< class of an `Object`, name of an enumeration; else empty
  bool by_reference = false;   ///< declared so in the interface
  bool written_back = false;   ///< the method may change the caller's variable
  bool optional = false;
  /// Of an optional parameter, of type `passed`; Missing where there is none.
  Variant default_value = Variant::missing();
};

/// Calls the C++ function behind a member. Every argument holds exactly the type that its parameter
/// takes; those that are written back are changed in place.
using Invoker = Variant (*)(Object& object, std::span<Variant* const> arguments);

/// One function of an interface. Members follow each other in the order of their slots; the rows of one
/// property stand together and share its `id`.
struct Member {
  std::string_view name;
  MemberKind kind = MemberKind::Method;
  std::int32_t id = 0;  ///< from 1 on, in the order of the names; 0 is the default member
  ValueType result = ValueType::None;
  std::string_view result_type_name;  ///< class of an `Object`, name of an enumeration; else empty
  std::vector<Parameter> parameters;
  Invoker invoke = nullptr;
};

/// How a member is used. Reading covers methods and properties, which scripts do not tell apart.
enum class Use : std::uint8_t { Read, Let, Set };

/// The elements of a collection, in their order.
struct Elements {
  std::size_t (*count)(Object& collection);
  Variant (*at)(Object& collection, std::size_t index);
};

struct HashIgnoringCase {
  std::size_t operator()(std::string_view text) const noexcept;
};
struct EqualIgnoringCase {
  bool operator()(std::string_view left, std::string_view right) const noexcept;
};

/// The table of one class. Tables are built once, and never change.
class ClassTable {
 public:
  static constexpr std::int32_t default_member = 0;

  using InstanceTest = bool (*)(const Object& object);

  ClassTable(std::string_view class_name, InstanceTest instance_test, std::vector<Member> members,
             std::optional<Elements> elements);
  ClassTable(const ClassTable&) = delete;
  ClassTable& operator=(const ClassTable&) = delete;

  /// Name of the class, such as "CRM".
  std::string_view name() const noexcept { return name_; }
  /// Whether an object is of this class.
  bool is_instance(const Object& object) const { return is_instance_(object); }
  /// All members, in the order of their slots.
  const std::vector<Member>& members() const noexcept { return members_; }
  /// What enumerating an object of this class gives; none when it is no collection.
  const std::optional<Elements>& elements() const noexcept { return elements_; }

  /// Identifier of the member of this name, whatever its case; nothing when there is none.
  std::optional<std::int32_t> id_of(std::string_view name) const;
  /// The row that this use of a member takes; null when the member cannot be used so.
  const Member* find(std::int32_t id, Use use) const noexcept;

 private:
  std::string_view name_;
  InstanceTest is_instance_;
  std::vector<Member> members_;
  std::optional<Elements> elements_;
  std::unordered_map<std::string_view, std::int32_t, HashIgnoringCase, EqualIgnoringCase> ids_;
  std::vector<std::vector<const Member*>> rows_of_;  ///< by identifier
};

/// Position of the parameter of this name, whatever its case; nothing when there is none.
std::optional<std::size_t> parameter_index(const Member& member, std::string_view name) noexcept;

}  // namespace pradelis::automation
