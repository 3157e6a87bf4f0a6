#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "com/owned_variant.h"
#include "com/platform.h"
#include "com/reference.h"

namespace pradelis::test {

/// One use of a member by a script.
struct ScriptCall {
  WORD flags = 0;
  std::vector<const VARIANT*>
      arguments;              ///< in their order; for a change of a property the new value is last
  VARIANT* result = nullptr;  ///< never null
};

/// An object that scripts use by name: its members are functions. Names match whatever their case; the
/// member that was added first is the default one.
class ScriptObject : public IDispatch {
 public:
  using Member = std::function<HRESULT(const ScriptCall& call)>;

  virtual ~ScriptObject() = default;

  void add(std::wstring name, Member member);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interface_id, void** result) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** result) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO*, UINT*) override;

 private:
  struct NamedMember {
    std::wstring name;
    Member function;
  };

  ULONG references_ = 1;
  std::vector<NamedMember> members_;
};

/// Whether a call changes a property.
bool is_change(const ScriptCall& call);

/// The text of a value under Brazilian settings; an object's is that of its default member; Null is empty.
std::wstring text_of(const VARIANT& value);

/// Copies what `source` holds, or what it refers to; `target` is empty.
HRESULT copy_value(VARIANT& target, const VARIANT& source);

/// Results of members.
HRESULT give(const ScriptCall& call, std::wstring_view text);
HRESULT give(const ScriptCall& call, long number);
HRESULT give(const ScriptCall& call, IDispatch* object);
HRESULT give(const ScriptCall& call, const VARIANT& value);

/// Equality of names whatever their case.
bool same_name(std::wstring_view left, std::wstring_view right);

}  // namespace pradelis::test
