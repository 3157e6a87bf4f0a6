#include "tests/com/asp_host/script_engine.h"

#include <activscp.h>

#include "com/reference.h"
#include "tests/com/support/script_object.h"

namespace pradelis::test {
namespace {

constexpr LCID brazilian = 0x0416;
constexpr wchar_t engine_program[] = L"VBScript";

// Wine's engine cannot call the default member of an object that a host gives it by name, as pages do in
// `Request("x")`; it can do so with a variable. Each object is given under another name, and put into one.
constexpr wchar_t given_prefix[] = L"given_";

std::wstring assignments(const std::vector<std::pair<std::wstring, IDispatch*>>& objects) {
  std::wstring script;
  for (const auto& object : objects)
    script += L"Set " + object.first + L" = " + given_prefix + object.first + L"\n";
  return script;
}

HRESULT parse(IActiveScriptParse& parser, const std::wstring& script) {
  EXCEPINFO info{};
  return parser.ParseScriptText(script.c_str(), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE,
                                nullptr, &info);
}

class Site final : public IActiveScriptSite {
 public:
  explicit Site(const std::vector<std::pair<std::wstring, IDispatch*>>& objects) : objects_(objects) {}

  const std::wstring& failure() const { return failure_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override {
    *result = nullptr;
    if (!IsEqualIID(interface_id, IID_IUnknown) && !IsEqualIID(interface_id, IID_IActiveScriptSite)) {
      return E_NOINTERFACE;
    }
    *result = static_cast<IActiveScriptSite*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override {
    *locale = brazilian;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR name, DWORD mask, IUnknown** item,
                                        ITypeInfo** type) override {
    if (type) *type = nullptr;
    for (const auto& [known, object] : objects_) {
      if (!same_name(given_prefix + known, name)) continue;
      if (mask & SCRIPTINFO_IUNKNOWN) {
        object->AddRef();
        *item = object;
      }
      return S_OK;
    }
    return TYPE_E_ELEMENTNOTFOUND;
  }
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
    EXCEPINFO info{};
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    error->GetExceptionInfo(&info);
    error->GetSourcePosition(&context, &line, &column);
    failure_ = L"linha " + std::to_wstring(line + 1) + L", erro " + std::to_wstring(info.scode) + L" (" +
               (info.bstrSource ? info.bstrSource : L"") + L"): " +
               (info.bstrDescription ? info.bstrDescription : L"");
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
    SysFreeString(info.bstrHelpFile);
    return S_OK;
  }

 private:
  const std::vector<std::pair<std::wstring, IDispatch*>>& objects_;
  std::wstring failure_;
};

}  // namespace

ScriptOutcome run_script(const std::wstring& script,
                         const std::vector<std::pair<std::wstring, IDispatch*>>& objects) {
  CLSID engine_class;
  com::Reference<IActiveScript> engine;
  com::Reference<IActiveScriptParse> parser;
  Site site(objects);
  HRESULT code = CLSIDFromProgID(engine_program, &engine_class);
  if (SUCCEEDED(code)) {
    code = CoCreateInstance(engine_class, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                            engine.untyped_receiver());
  }
  if (SUCCEEDED(code)) code = engine->QueryInterface(__uuidof(IActiveScriptParse), parser.untyped_receiver());
  if (SUCCEEDED(code)) code = engine->SetScriptSite(&site);
  if (SUCCEEDED(code)) code = parser->InitNew();
  if (FAILED(code)) return {code, L"no script engine"};
  for (const auto& object : objects) {
    engine->AddNamedItem((given_prefix + object.first).c_str(), SCRIPTITEM_ISVISIBLE);
  }
  code = parse(*parser.get(), assignments(objects));
  if (SUCCEEDED(code)) code = parse(*parser.get(), script);
  if (SUCCEEDED(code)) code = engine->SetScriptState(SCRIPTSTATE_STARTED);
  engine->Close();
  return {code, site.failure()};
}

}  // namespace pradelis::test
