#include <gtest/gtest.h>

#include <map>

#include "automation/classes.h"
#include "com/guid.h"
#include "com/identifiers.h"
#include "com/reference.h"
#include "com/text.h"
#include "com/variant_in.h"
#include "values/text.h"

// The type library, read through the platform's loader from the registered library itself, says what the
// classes' tables say.
namespace pradelis::com {
namespace {

using automation::ClassTable;
using automation::Member;
using automation::MemberKind;
using automation::Parameter;
using automation::ValueType;

const ClassTable& table_of(const ClassIdentifiers& one) {
  for (const ClassTable* table : automation::all_tables()) {
    if (table->name() == one.class_name) return *table;
  }
  throw std::logic_error("no such class");
}

Reference<ITypeLib> registered_library() {
  Reference<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(guid_of(library_id), library_major_version, library_minor_version, 0x0416,
                           library.receiver()),
            S_OK);
  return library;
}

std::string name_of(ITypeInfo& type) {
  BSTR name = nullptr;
  type.GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
  std::string result = from_bstr(name);
  SysFreeString(name);
  return result;
}

VARTYPE type_of(ValueType type) {
  static const std::map<ValueType, VARTYPE> types = {
      {ValueType::Boolean, VT_BOOL},   {ValueType::UInt8, VT_UI1}, {ValueType::Int16, VT_I2},
      {ValueType::Int32, VT_I4},       {ValueType::Int64, VT_I8},  {ValueType::Double, VT_R8},
      {ValueType::Date, VT_DATE},      {ValueType::Text, VT_BSTR}, {ValueType::Variant, VT_VARIANT},
      {ValueType::Object, VT_DISPATCH}};
  return types.at(type);
}

/// A type as the tables name it: "BSTR" is 8, an enumeration or a dual interface its name, a pointer "*".
std::string text_of(ITypeInfo& owner, const TYPEDESC& type) {
  if (type.vt == VT_PTR) return text_of(owner, *type.lptdesc) + "*";
  if (type.vt != VT_USERDEFINED) return std::to_string(type.vt);
  Reference<ITypeInfo> referred;
  if (FAILED(owner.GetRefTypeInfo(type.hreftype, referred.receiver()))) return "?";
  return name_of(*referred.get());
}

std::string expected_type(ValueType type, std::string_view type_name) {
  if (type == ValueType::Int32 && !type_name.empty()) return concat(type_name, "Enum");
  for (const ClassIdentifiers& one : class_identifiers) {
    if (type == ValueType::Object && one.class_name == type_name) return concat("_", type_name, "*");
  }
  return std::to_string(type_of(type));
}

INVOKEKIND invoke_kind(MemberKind kind) {
  switch (kind) {
    case MemberKind::Get:
      return INVOKE_PROPERTYGET;
    case MemberKind::Let:
      return INVOKE_PROPERTYPUT;
    case MemberKind::Set:
      return INVOKE_PROPERTYPUTREF;
    case MemberKind::Method:
      break;
  }
  return INVOKE_FUNC;
}

void expect_parameter(ITypeInfo& type, const ELEMDESC& found, const Parameter& wanted) {
  SCOPED_TRACE(wanted.name);
  EXPECT_EQ(text_of(type, found.tdesc),
            expected_type(wanted.type, wanted.type_name) + (wanted.by_reference ? "*" : ""));
  const bool has_default = wanted.optional && !wanted.default_value.is_missing();
  const int flags = PARAMFLAG_FIN | (wanted.by_reference ? PARAMFLAG_FOUT : 0) |
                    (wanted.optional ? PARAMFLAG_FOPT : 0) | (has_default ? PARAMFLAG_FHASDEFAULT : 0);
  EXPECT_EQ(found.paramdesc.wParamFlags, flags);
  if (has_default && (found.paramdesc.wParamFlags & PARAMFLAG_FHASDEFAULT)) {
    EXPECT_EQ(from_variant(found.paramdesc.pparamdescex->varDefaultValue), wanted.default_value);
  }
}

void expect_names(ITypeInfo& type, const FUNCDESC& found, const Member& wanted) {
  constexpr UINT most_names = 32;
  BSTR names[most_names] = {};
  UINT count = 0;
  ASSERT_EQ(type.GetNames(found.memid, names, most_names, &count), S_OK);
  EXPECT_EQ(from_bstr(names[0]), wanted.name);
  if (wanted.kind == MemberKind::Method) {
    ASSERT_GE(count, wanted.parameters.size() + 1);
    for (std::size_t i = 0; i < wanted.parameters.size(); ++i) {
      EXPECT_EQ(from_bstr(names[i + 1]), wanted.parameters[i].name);
    }
  }
  for (UINT i = 0; i < count; ++i) SysFreeString(names[i]);
}

void expect_function(ITypeInfo& type, UINT row, const Member& wanted) {
  constexpr UINT common_functions = 7;
  SCOPED_TRACE(wanted.name);
  FUNCDESC* found = nullptr;
  ASSERT_EQ(type.GetFuncDesc(row, &found), S_OK);
  const bool has_result = wanted.result != ValueType::None;
  expect_names(type, *found, wanted);
  EXPECT_EQ(found->memid, wanted.id);
  EXPECT_EQ(found->invkind, invoke_kind(wanted.kind));
  EXPECT_EQ(static_cast<std::size_t>(found->oVft), (common_functions + row) * sizeof(void*));
  EXPECT_EQ(found->elemdescFunc.tdesc.vt, VT_HRESULT);
  ASSERT_EQ(static_cast<std::size_t>(found->cParams), wanted.parameters.size() + (has_result ? 1 : 0));
  for (std::size_t i = 0; i < wanted.parameters.size(); ++i) {
    expect_parameter(type, found->lprgelemdescParam[i], wanted.parameters[i]);
  }
  if (has_result) {
    const ELEMDESC& result = found->lprgelemdescParam[wanted.parameters.size()];
    EXPECT_EQ(text_of(type, result.tdesc), expected_type(wanted.result, wanted.result_type_name) + "*");
    EXPECT_EQ(result.paramdesc.wParamFlags, PARAMFLAG_FOUT | PARAMFLAG_FRETVAL);
  }
  type.ReleaseFuncDesc(found);
}

/// The interface behind the calls by name that a dual one is shown as.
Reference<ITypeInfo> table_side(ITypeInfo& dual) {
  constexpr UINT the_other_side = static_cast<UINT>(-1);
  HREFTYPE other = 0;
  Reference<ITypeInfo> result;
  EXPECT_EQ(dual.GetRefTypeOfImplType(the_other_side, &other), S_OK);
  EXPECT_EQ(dual.GetRefTypeInfo(other, result.receiver()), S_OK);
  return result;
}

TEST(TypeLibrary, SaysOfEveryFunctionWhatItsTableSays) {
  const Reference<ITypeLib> library = registered_library();
  ASSERT_TRUE(library);
  for (const ClassIdentifiers& one : class_identifiers) {
    SCOPED_TRACE(one.class_name);
    Reference<ITypeInfo> type;
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(library->GetTypeInfoOfGuid(guid_of(one.interface_id), type.receiver()), S_OK);
    EXPECT_EQ(name_of(*type.get()), concat("_", one.class_name));
    const Reference<ITypeInfo> functions = table_side(*type.get());
    ASSERT_EQ(functions->GetTypeAttr(&attributes), S_OK);
    constexpr int flags =
        TYPEFLAG_FDUAL | TYPEFLAG_FOLEAUTOMATION | TYPEFLAG_FHIDDEN | TYPEFLAG_FNONEXTENSIBLE;
    EXPECT_EQ(attributes->wTypeFlags & flags, flags);

    const std::vector<Member>& members = table_of(one).members();
    EXPECT_EQ(attributes->cFuncs, members.size());
    for (UINT row = 0; row < members.size() && row < attributes->cFuncs; ++row) {
      expect_function(*functions.get(), row, members[row]);
    }
    functions->ReleaseTypeAttr(attributes);
  }
}

TEST(TypeLibrary, GivesEachClassItsDefaultInterface) {
  const Reference<ITypeLib> library = registered_library();
  ASSERT_TRUE(library);
  for (const ClassIdentifiers& one : class_identifiers) {
    Reference<ITypeInfo> type;
    Reference<ITypeInfo> interface_type;
    HREFTYPE reference = 0;
    int flags = 0;
    ASSERT_EQ(library->GetTypeInfoOfGuid(guid_of(one.class_id), type.receiver()), S_OK);
    EXPECT_EQ(name_of(*type.get()), one.class_name);
    ASSERT_EQ(type->GetImplTypeFlags(0, &flags), S_OK);
    EXPECT_EQ(flags, IMPLTYPEFLAG_FDEFAULT);
    ASSERT_EQ(type->GetRefTypeOfImplType(0, &reference), S_OK);
    ASSERT_EQ(type->GetRefTypeInfo(reference, interface_type.receiver()), S_OK);
    EXPECT_EQ(name_of(*interface_type.get()), concat("_", one.class_name));
  }
}

}  // namespace
}  // namespace pradelis::com
