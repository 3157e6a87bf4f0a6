#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "automation/classes.h"
#include "com/error_info.h"
#include "com/guid.h"
#include "com/identifiers.h"
#include "com/variant_in.h"
#include "com/variant_out.h"
#include "tests/com/windows/page.h"
#include "tests/com/windows/platform_values.h"
#include "values/text.h"

// Every member of the four classes, called with the same arguments by its name and through its place in the
// table of functions, does the same. There is no database: most methods fail, each with its own name as the
// source.
namespace pradelis::test {
namespace {

using automation::Member;
using automation::MemberKind;
using automation::Parameter;
using automation::ValueType;

/// How a call ended, the arguments as they stand afterwards, and the result.
struct Outcome {
  std::int32_t error = 0;
  std::string source;
  std::string description;
  std::vector<Variant> arguments;
  Variant result;

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

std::string text_of(const Variant& value) {
  switch (value.type()) {
    case VariantType::Empty:
      return "Empty";
    case VariantType::Null:
      return "Null";
    case VariantType::Array:
      return "array";
    case VariantType::Object:
      return value.get<ObjectPtr>() ? "object" : "Nothing";
    default:
      return concat(value);
  }
}

void PrintTo(const Outcome& outcome, std::ostream* stream) {
  *stream << outcome.error << ' ' << outcome.source << ": " << outcome.description << " (";
  for (const Variant& argument : outcome.arguments) *stream << text_of(argument) << ", ";
  *stream << ") " << text_of(outcome.result);
}

VARTYPE type_of(ValueType type) {
  switch (type) {
    case ValueType::Boolean:
      return VT_BOOL;
    case ValueType::UInt8:
      return VT_UI1;
    case ValueType::Int16:
      return VT_I2;
    case ValueType::Int32:
      return VT_I4;
    case ValueType::Double:
      return VT_R8;
    case ValueType::Date:
      return VT_DATE;
    case ValueType::Text:
      return VT_BSTR;
    case ValueType::Object:
      return VT_DISPATCH;
    default:
      return VT_VARIANT;
  }
}

Variant argument_for(const Parameter& parameter, MemberKind kind) {
  if (kind == MemberKind::Set) return ObjectPtr();
  switch (parameter.type) {
    case ValueType::Boolean:
      return false;  // no time of day is asked for, which the clock could change between the two calls
    case ValueType::UInt8:
      return std::uint8_t{7};
    case ValueType::Int16:
      return std::int16_t{300};
    case ValueType::Int32:
      return std::int32_t{100'001};
    case ValueType::Double:
      return 1234.5;
    case ValueType::Date:
      return Date{39877.25};
    case ValueType::Object:
      return ObjectPtr();
    default:
      return "1.234,5";
  }
}

/// An argument in a variable of the parameter's own type.
class TypedArgument {
 public:
  TypedArgument(const Parameter& parameter, const Variant& value) : type_(type_of(parameter.type)) {
    Value source;
    com::to_variant(value, source);
    if (type_ == VT_VARIANT) {
      VariantCopy(&value_, &source);
    } else {
      EXPECT_EQ(VariantChangeType(&value_, &source, 0, type_), S_OK);
    }
    if (!parameter.by_reference) {
      passed_ = value_;
    } else if (type_ == VT_VARIANT) {
      passed_ = value_.reference();
    } else {
      passed_.vt = static_cast<VARTYPE>(type_ | VT_BYREF);
      passed_.byref = &value_.byref;
    }
  }
  TypedArgument(const TypedArgument&) = delete;
  TypedArgument& operator=(const TypedArgument&) = delete;

  /// What a caller by name gives, and the type under which a caller through the table does.
  VARIANT& passed() { return passed_; }
  VARTYPE passed_type() const { return static_cast<VARTYPE>(type_ | (passed_.vt & VT_BYREF)); }
  Variant content() const { return com::from_variant(value_); }

 private:
  VARTYPE type_;
  Value value_;
  VARIANT passed_{};
};

using Arguments = std::vector<std::unique_ptr<TypedArgument>>;

Arguments arguments_for(const Member& member) {
  Arguments arguments;
  for (const Parameter& parameter : member.parameters) {
    arguments.push_back(std::make_unique<TypedArgument>(parameter, argument_for(parameter, member.kind)));
  }
  return arguments;
}

void take_arguments(const Arguments& arguments, Outcome& outcome) {
  for (const auto& argument : arguments) outcome.arguments.push_back(argument->content());
}

WORD flags_of(MemberKind kind) {
  switch (kind) {
    case MemberKind::Get:
      return DISPATCH_PROPERTYGET;
    case MemberKind::Let:
      return DISPATCH_PROPERTYPUT;
    case MemberKind::Set:
      return DISPATCH_PROPERTYPUTREF;
    case MemberKind::Method:
      break;
  }
  return DISPATCH_METHOD;
}

Outcome called_by_name(IDispatch& object, const Member& member) {
  const Arguments arguments = arguments_for(member);
  std::vector<VARIANT> reversed;
  for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
    reversed.push_back((*argument)->passed());
  }
  DISPID new_value = DISPID_PROPERTYPUT;
  const bool changes = member.kind == MemberKind::Let || member.kind == MemberKind::Set;
  DISPPARAMS parameters{reversed.data(), &new_value, static_cast<UINT>(reversed.size()), changes ? 1U : 0U};
  Value result;
  EXCEPINFO exception{};
  Outcome outcome;
  const HRESULT code =
      object.Invoke(member.id, IID_NULL, 0, flags_of(member.kind), &parameters, &result, &exception, nullptr);
  if (FAILED(code)) {
    const Error error = com::error_of(code, exception);
    outcome = {error.number(), error.source(), error.description(), {}, {}};
  }
  take_arguments(arguments, outcome);
  outcome.result = com::from_variant(result);
  return outcome;
}

Outcome called_through_table(IDispatch& object, const Member& member, std::size_t row) {
  constexpr std::size_t common_functions = 7;
  const Arguments arguments = arguments_for(member);
  std::vector<VARTYPE> types;
  std::vector<VARIANTARG*> places;
  // A pointer to the place of a value is handed over as such.
  std::vector<VARIANT> handed(arguments.size() + 1);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    handed[i] = arguments[i]->passed();
    const bool whole = arguments[i]->passed_type() == VT_VARIANT;
    types.push_back(arguments[i]->passed_type());
    places.push_back(whole ? &arguments[i]->passed() : &handed[i]);
  }
  Value result;
  if (member.result != ValueType::None) {
    const VARTYPE type = type_of(member.result);
    handed.back().vt = VT_BYREF | VT_VARIANT;
    handed.back().byref = type == VT_VARIANT ? static_cast<void*>(&result) : &result.byref;
    types.push_back(VT_BYREF | VT_VARIANT);
    places.push_back(&handed.back());
    if (type != VT_VARIANT) result.vt = type;
  }
  Value code;
  EXPECT_EQ(DispCallFunc(&object, (common_functions + row) * sizeof(void*), CC_STDCALL, VT_ERROR,
                         static_cast<UINT>(types.size()), types.data(), places.data(), &code),
            S_OK);
  Outcome outcome;
  if (FAILED(code.scode)) {
    com::Reference<IErrorInfo> info;
    Text source;
    Text description;
    EXPECT_EQ(GetErrorInfo(0, info.receiver()), S_OK);
    if (info) {
      info->GetSource(&source);
      info->GetDescription(&description);
    }
    outcome = {com::number_of(code.scode), source.utf8(), description.utf8(), {}, {}};
    result.vt = VT_EMPTY;
  }
  take_arguments(arguments, outcome);
  outcome.result = com::from_variant(result);
  return outcome;
}

class EveryMember : public testing::TestWithParam<com::ClassIdentifiers> {};

TEST_P(EveryMember, DoesTheSameByBothRoads) {
  const com::ClassIdentifiers& one = GetParam();
  CLSID class_id;
  com::Reference<IDispatch> object;
  const std::wstring program = com::to_utf16(one.program_identifier);
  ASSERT_EQ(CLSIDFromProgID(program.c_str(), &class_id), S_OK);
  ASSERT_EQ(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, com::guid_of(one.interface_id),
                             object.untyped_receiver()),
            S_OK);
  for (const automation::ClassTable* table : automation::all_tables()) {
    if (table->name() != one.class_name) continue;
    for (std::size_t row = 0; row < table->members().size(); ++row) {
      const Member& member = table->members()[row];
      Outcome by_name = called_by_name(*object.get(), member);
      Outcome through_table = called_through_table(*object.get(), member, row);
      if (member.result == ValueType::Object) {
        EXPECT_EQ(text_of(by_name.result), text_of(through_table.result));
        by_name.result = through_table.result = Variant();
      }
      EXPECT_EQ(by_name, through_table) << member.name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, EveryMember, testing::ValuesIn(com::class_identifiers),
                         [](const auto& one) { return std::string(one.param.class_name); });

}  // namespace
}  // namespace pradelis::test
