#include "tests/com/dialogue/windows_host.h"

#include <map>
#include <memory>
#include <vector>

#include "com/error_info.h"
#include "com/foreign_object.h"
#include "com/text.h"
#include "com/variant_in.h"
#include "com/variant_out.h"
#include "values/convert.h"
#include "values/error.h"

namespace pradelis::test {
namespace {

using automation::Use;
using com::ForeignObject;
using com::OwnedVariant;
using command::Json;

ForeignObject& foreign(Object& object) { return dynamic_cast<ForeignObject&>(object); }

WORD flags_of(Use use) {
  switch (use) {
    case Use::Let:
      return DISPATCH_PROPERTYPUT;
    case Use::Set:
      return DISPATCH_PROPERTYPUTREF;
    case Use::Read:
      break;
  }
  return DISPATCH_METHOD | DISPATCH_PROPERTYGET;
}

/// What a variable holds. An object stays what callers of the platform hold: that it is this very
/// component's own must not be seen here.
Variant value_of(const VARIANT& variable) {
  if (variable.vt != VT_DISPATCH) return com::from_variant(variable);
  if (!variable.pdispVal) return ObjectPtr();
  return ObjectPtr(std::make_shared<ForeignObject>(com::Reference<IDispatch>::to(variable.pdispVal)));
}

/// A script's variables, and what it hands over of them: references, from the last to the first.
class Variables {
 public:
  explicit Variables(std::span<const Variant> values)
      : variables_(values.size()), references_(values.size()) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      com::to_variant(values[i], variables_[i].get());
      VARIANT& reference = references_[values.size() - 1 - i];
      VariantInit(&reference);
      reference.vt = VT_BYREF | VT_VARIANT;
      reference.pvarVal = &variables_[i].get();
    }
  }

  DISPPARAMS parameters(Use use) {
    static DISPID new_value = DISPID_PROPERTYPUT;
    DISPPARAMS result{references_.data(), nullptr, static_cast<UINT>(references_.size()), 0};
    if (use != Use::Read) {
      result.rgdispidNamedArgs = &new_value;
      result.cNamedArgs = 1;
    }
    return result;
  }

  void read_back(std::span<Variant> values) const {
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = value_of(variables_[i].get());
  }

 private:
  std::vector<OwnedVariant> variables_;
  std::vector<VARIANTARG> references_;
};

/// Names of the columns' types by the codes that fields answer with.
std::string name_of_type(const Variant& code) {
  static const std::map<std::int32_t, std::string> names = {
      {11, "boolean"}, {17, "uint8"}, {2, "int16"},  {3, "int32"},   {20, "int64"},
      {5, "double"},   {135, "date"}, {202, "text"}, {204, "bytes"},
  };
  return names.at(to_int32(code));
}

void set(NamedValues& values, const std::string& name, const Variant& value) {
  OwnedVariant variable;
  com::to_variant(value, variable.get());
  values.set(com::to_utf16(name), variable.get());
}

}  // namespace

WindowsHost::WindowsHost(PageObjects& page, const std::string& database) : page_(page) {
  set_application("dataconn_ConnectionString", database);
  set_application("dataconn_ConnectionTimeout", std::int32_t{15});
  set_application("dataconn_CommandTimeout", std::int32_t{30});
  set_application("Link_local", "");
}

ObjectPtr WindowsHost::create(const std::string& program_identifier) {
  CLSID class_id;
  com::Reference<IDispatch> created;
  if (FAILED(CLSIDFromProgID(com::to_utf16(program_identifier).c_str(), &class_id))) {
    raise(error_number::cannot_create_object);
  }
  const HRESULT code =
      CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, created.untyped_receiver());
  if (FAILED(code)) raise(com::number_of(code));
  return std::make_shared<ForeignObject>(std::move(created));
}

Variant WindowsHost::invoke(Object& object, std::string_view member, Use use, std::span<Variant> arguments) {
  const ForeignObject& target = foreign(object);
  const DISPID id = target.id_of(com::to_utf16(member).c_str());
  Variables variables(arguments);
  DISPPARAMS parameters = variables.parameters(use);
  OwnedVariant result;
  EXCEPINFO exception{};
  const HRESULT code =
      target.dispatch()->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags_of(use), &parameters,
                                use == Use::Read ? &result.get() : nullptr, &exception, nullptr);
  variables.read_back(arguments);
  if (FAILED(code)) throw com::error_of(code, exception);
  return value_of(result.get());
}

Json WindowsHost::rows(const ObjectPtr& recordset, std::int64_t limit) {
  OLECHAR move_next[] = L"MoveNext";
  LPOLESTR name = move_next;
  DISPID move_id = 0;
  if (FAILED(
          foreign(*recordset).dispatch()->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &move_id))) {
    raise(error_number::type_mismatch);
  }
  const auto read = [&](Object& object, std::string_view member) {
    return invoke(object, member, Use::Read, {});
  };
  Json columns = Json::array();
  Json types = Json::array();
  Json rows = Json::array();
  const ObjectPtr fields = to_object(read(*recordset, "Fields"));
  std::vector<ObjectPtr> each;
  for (std::int32_t i = 0; i < to_int32(read(*fields, "Count")); ++i) {
    Variant index = i;
    each.push_back(to_object(invoke(*fields, "Item", Use::Read, {&index, 1})));
    columns.push_back(command::to_json(read(*each.back(), "Name")));
    types.push_back(name_of_type(read(*each.back(), "Type")));
  }
  for (std::int64_t count = 0; count != limit && !to_boolean(read(*recordset, "EOF")); ++count) {
    Json row = Json::array();
    for (const ObjectPtr& field : each) row.push_back(command::to_json(read(*field, "Value")));
    rows.push_back(std::move(row));
    read(*recordset, "MoveNext");
  }
  return {{"columns", std::move(columns)}, {"types", std::move(types)}, {"rows", std::move(rows)}};
}

void WindowsHost::set_application(const std::string& name, const Variant& value) {
  set(*page_.application.get(), name, value);
}

void WindowsHost::set_session(const std::string& name, const Variant& value) {
  set(*page_.session.get(), name, value);
}

std::string WindowsHost::take_written() { return com::to_utf8(std::exchange(page_.response->text, {})); }

}  // namespace pradelis::test
