#include "com/idl/interface_definition.h"

#include <array>
#include <string_view>
#include <vector>

#include "automation/classes.h"
#include "com/identifiers.h"
#include "com/idl/enumerations.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::com {
namespace {

using automation::ClassTable;
using automation::Member;
using automation::MemberKind;
using automation::Parameter;
using automation::ValueType;

bool is_dual(std::string_view class_name) {
  for (const ClassIdentifiers& one : class_identifiers) {
    if (one.class_name == class_name) return true;
  }
  return false;
}

std::string type_text(ValueType type, std::string_view type_name) {
  switch (type) {
    case ValueType::Boolean:
      return "VARIANT_BOOL";
    case ValueType::UInt8:
      return "unsigned char";
    case ValueType::Int16:
      return "short";
    case ValueType::Int32:
      return type_name.empty() ? "long" : concat(type_name, "Enum");
    case ValueType::Int64:
      return "hyper";
    case ValueType::Double:
      return "double";
    case ValueType::Date:
      return "DATE";
    case ValueType::Text:
      return "BSTR";
    case ValueType::Object:
      return is_dual(type_name) ? concat("_", type_name, "*") : "IDispatch*";
    case ValueType::Variant:
    case ValueType::Matrix:
    case ValueType::None:
      break;
  }
  return "VARIANT";
}

std::string literal(const Variant& value) {
  switch (value.type()) {
    case VariantType::Boolean:
      return value.get<bool>() ? "-1" : "0";
    case VariantType::Text:
      return concat("\"", value, "\"");
    default:
      return to_text(value);
  }
}

std::string parameter_text(const Parameter& parameter) {
  std::string text = parameter.by_reference ? "[in, out" : "[in";
  if (parameter.optional) text += ", optional";
  if (parameter.optional && !parameter.default_value.is_missing()) {
    text += concat(", defaultvalue(", literal(parameter.default_value), ")");
  }
  text += concat("] ", type_text(parameter.type, parameter.type_name), parameter.by_reference ? "* " : " ",
                 parameter.name);
  return text;
}

std::string_view attribute(MemberKind kind) {
  switch (kind) {
    case MemberKind::Get:
      return ", propget";
    case MemberKind::Let:
      return ", propput";
    case MemberKind::Set:
      return ", propputref";
    case MemberKind::Method:
      break;
  }
  return "";
}

std::string member_text(const Member& member) {
  std::vector<std::string> parameters;
  for (const Parameter& parameter : member.parameters) parameters.push_back(parameter_text(parameter));
  if (member.result != ValueType::None) {
    parameters.push_back(
        concat("[out, retval] ", type_text(member.result, member.result_type_name), "* result"));
  }
  std::string text =
      concat("        [id(", member.id, ")", attribute(member.kind), "]\n        HRESULT ", member.name, "(");
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    text += concat(i == 0 ? "\n" : ",\n", "            ", parameters[i]);
  }
  return text + ");\n";
}

std::string attributes(std::string_view id, std::string_view description, std::string_view others) {
  return concat("    [\n        uuid(", id, "),\n        helpstring(\"", description, "\")", others,
                "\n    ]\n");
}

std::string interface_text(const ClassIdentifiers& one, const ClassTable& table) {
  std::string text = attributes(one.interface_id, one.description,
                                ",\n        odl, dual, hidden, nonextensible, oleautomation");
  text += concat("    interface _", one.class_name, " : IDispatch {\n");
  for (const Member& member : table.members()) text += member_text(member);
  return text + "    };\n\n";
}

std::string class_text(const ClassIdentifiers& one) {
  return concat(attributes(one.class_id, one.description, ""), "    coclass ", one.class_name,
                " {\n        [default] interface _", one.class_name, ";\n    };\n\n");
}

std::string enumeration_text(const Enumeration& enumeration) {
  std::string text = concat("    typedef [uuid(", enumeration.id, ")]\n    enum {\n");
  for (const EnumerationConstant& constant : enumeration.constants) {
    text += concat("        ", constant.name, " = ", constant.value, ",\n");
  }
  text.erase(text.size() - 2, 1);
  return text + concat("    } ", enumeration.name, "Enum;\n\n");
}

}  // namespace

std::string interface_definition() {
  const std::array tables = {&automation::crm_table(), &automation::pessoa_juridica_table(),
                             &automation::vendedor_table(), &automation::grupo_usuarios_table()};
  static_assert(tables.size() == class_identifiers.size());

  std::string text = concat(
      "// Written by write_interface_definition from the tables of the classes; not to be edited.\n"
      "import \"oaidl.idl\";\n\n[\n    uuid(",
      library_id, "),\n    version(", static_cast<std::int32_t>(library_major_version), ".",
      static_cast<std::int32_t>(library_minor_version), "),\n    helpstring(\"", library_description,
      "\")\n]\nlibrary ", library_name, "\n{\n    importlib(\"stdole2.tlb\");\n\n");
  for (const ClassIdentifiers& one : class_identifiers)
    text += concat("    interface _", one.class_name, ";\n");
  text += "\n";
  for (const Enumeration& enumeration : enumerations()) text += enumeration_text(enumeration);
  for (std::size_t i = 0; i < tables.size(); ++i) text += interface_text(class_identifiers[i], *tables[i]);
  for (const ClassIdentifiers& one : class_identifiers) text += class_text(one);
  text.erase(text.size() - 1);
  return text + "};\n";
}

}  // namespace pradelis::com
