#include "tests/com/support/page_objects.h"

#include <array>

namespace pradelis::test {
namespace {

template <class T, class... Arguments>
com::Reference<T> make(Arguments&&... arguments) {
  com::Reference<T> result;
  *result.receiver() = new T(std::forward<Arguments>(arguments)...);
  return result;
}

std::wstring html_encoded(const std::wstring& text) {
  std::wstring result;
  for (const wchar_t c : text) {
    switch (c) {
      case L'&':
        result += L"&amp;";
        break;
      case L'<':
        result += L"&lt;";
        break;
      case L'>':
        result += L"&gt;";
        break;
      case L'"':
        result += L"&quot;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

/// A field as pages get it: an object whose default member is the text.
com::Reference<ScriptObject> field_object(const FormFields& fields, const std::wstring& name) {
  auto object = make<ScriptObject>();
  std::wstring text;
  long count = 0;
  for (const auto& [key, value] : fields) {
    if (!same_name(key, name)) continue;
    text += (count++ == 0 ? L"" : L", ") + value;
  }
  object->add(L"Item", [text, count](const ScriptCall& call) {
    return count == 0 ? S_OK : give(call, text);  // Empty when there is no such field
  });
  object->add(L"Count", [count](const ScriptCall& call) { return give(call, count); });
  return object;
}

bool has_field(const FormFields& fields, const std::wstring& name) {
  for (const auto& field : fields) {
    if (same_name(field.first, name)) return true;
  }
  return false;
}

HRESULT create_object(const ScriptCall& call) {
  CLSID class_id;
  if (const HRESULT code = CLSIDFromProgID(text_of(*call.arguments.at(0)).c_str(), &class_id); FAILED(code)) {
    return code;
  }
  call.result->vt = VT_DISPATCH;
  call.result->pdispVal = nullptr;
  const HRESULT code = CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                        reinterpret_cast<void**>(&call.result->pdispVal));
  if (FAILED(code)) call.result->vt = VT_EMPTY;
  return code;
}

}  // namespace

bool NamedValues::OrderIgnoringCase::operator()(std::wstring_view left, std::wstring_view right) const {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                              static_cast<int>(right.size()), TRUE) == CSTR_LESS_THAN;
}

NamedValues::NamedValues() {
  add(L"Value", [this](const ScriptCall& call) { return value(call); });
  add(L"Lock", [](const ScriptCall&) { return S_OK; });
  add(L"Unlock", [](const ScriptCall&) { return S_OK; });
  add(L"Abandon", [this](const ScriptCall&) {
    values_.clear();
    return S_OK;
  });
}

const VARIANT* NamedValues::find(std::wstring_view name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? nullptr : &found->second.get();
}

void NamedValues::set(std::wstring_view name, const VARIANT& value) {
  copy_value(values_[std::wstring(name)].get(), value);
}

void NamedValues::set_text(std::wstring_view name, std::wstring_view value) {
  com::OwnedVariant text;
  text.get().bstrVal = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
  text.get().vt = VT_BSTR;
  set(name, text.get());
}

HRESULT NamedValues::value(const ScriptCall& call) {
  const std::size_t expected = is_change(call) ? 2 : 1;
  if (call.arguments.size() != expected) return DISP_E_BADPARAMCOUNT;
  const std::wstring name = text_of(*call.arguments[0]);
  if (is_change(call)) {
    set(name, *call.arguments[1]);
    return S_OK;
  }
  const VARIANT* found = find(name);
  return found ? give(call, *found) : S_OK;
}

Response::Response() {
  add(L"Write", [this](const ScriptCall& call) {
    for (const VARIANT* value : call.arguments) text += text_of(*value);
    return S_OK;
  });
  add(L"Text", [this](const ScriptCall& call) { return give(call, text); });  // for tests alone
  add(L"Clear", [this](const ScriptCall&) {
    text.clear();
    return S_OK;
  });
  add(L"Redirect", [this](const ScriptCall& call) {
    redirect = text_of(*call.arguments.at(0));
    return end();
  });
  add(L"End", [this](const ScriptCall&) { return end(); });
  add(L"Status", [this](const ScriptCall& call) {
    if (is_change(call)) status = text_of(*call.arguments.at(0));
    return S_OK;
  });
  for (const wchar_t* setting : {L"Buffer", L"CharSet", L"CodePage", L"ContentType", L"Expires", L"LCID"}) {
    add(setting, [](const ScriptCall&) { return S_OK; });
  }
}

HRESULT Response::end() {
  ended = true;
  return E_ABORT;  // stops the script; its host knows why
}

Request::Request(std::wstring_view method, FormFields query, FormFields form)
    : query_(std::move(query)),
      form_(std::move(form)),
      variables_{{L"REQUEST_METHOD", std::wstring(method)},
                 {L"REMOTE_ADDR", L"127.0.0.1"},
                 {L"HTTP_HOST", L"localhost"}} {
  add(L"Item", [this](const ScriptCall& call) {
    const std::wstring name = text_of(*call.arguments.at(0));
    return give(call, field_object(has_field(query_, name) ? query_ : form_, name).get());
  });
  add_collection(L"QueryString", query_);
  add_collection(L"Form", form_);
  add_collection(L"ServerVariables", variables_);
}

void Request::add_collection(std::wstring name, const FormFields& fields) {
  add(std::move(name), [&fields](const ScriptCall& call) {
    return give(call, field_object(fields, text_of(*call.arguments.at(0))).get());
  });
}

Server::Server() {
  add(L"CreateObject", create_object);
  add(L"HTMLEncode",
      [](const ScriptCall& call) { return give(call, html_encoded(text_of(*call.arguments.at(0)))); });
}

PageObjects::PageObjects()
    : application(make<NamedValues>()), session(make<NamedValues>()), response(make<Response>()) {}

AppServer::AppServer(PageObjects& page) {
  add(L"GetObjectContext", [&page](const ScriptCall& call) {
    auto context = make<ScriptObject>();
    context->add(L"Item", [&page](const ScriptCall& item) {
      const std::wstring name = text_of(*item.arguments.at(0));
      if (same_name(name, L"Application")) return give(item, page.application.get());
      if (same_name(name, L"Session")) return give(item, page.session.get());
      if (same_name(name, L"Response")) return give(item, page.response.get());
      return E_INVALIDARG;
    });
    return give(call, context.get());
  });
}

namespace {

class AppServerFactory final : public IClassFactory {
 public:
  explicit AppServerFactory(std::function<IDispatch*()> create) : create_(std::move(create)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    *result = nullptr;
    if (!IsEqualIID(interface_id, IID_IUnknown) && !IsEqualIID(interface_id, IID_IClassFactory)) {
      return E_NOINTERFACE;
    }
    *result = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID interface_id, void** result) override {
    com::Reference<IDispatch> created;
    *created.receiver() = create_();
    return created->QueryInterface(interface_id, result);
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  std::function<IDispatch*()> create_;
};

}  // namespace

IClassFactory& app_server_factory(std::function<IDispatch*()> create) {
  return *new AppServerFactory(std::move(create));
}

HRESULT register_app_server(PageObjects& page) {
  CLSID class_id;
  DWORD registration = 0;
  IClassFactory& factory = app_server_factory([&page] { return new AppServer(page); });
  if (const HRESULT code = CLSIDFromString(app_server_class, &class_id); FAILED(code)) return code;
  return CoRegisterClassObject(class_id, &factory, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration);
}

}  // namespace pradelis::test
