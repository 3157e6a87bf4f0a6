#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tests/com/support/script_object.h"

/// The objects that a web server gives to its pages, as far as pages of the component use them.
namespace pradelis::test {

/// Named values that outlive a page: Application and Session.
class NamedValues : public ScriptObject {
 public:
  NamedValues();

  const VARIANT* find(std::wstring_view name) const;
  void set(std::wstring_view name, const VARIANT& value);
  void set_text(std::wstring_view name, std::wstring_view value);

 private:
  struct OrderIgnoringCase {
    using is_transparent = void;
    bool operator()(std::wstring_view left, std::wstring_view right) const;
  };

  HRESULT value(const ScriptCall& call);

  std::map<std::wstring, com::OwnedVariant, OrderIgnoringCase> values_;
};

/// What the page is answered with.
class Response : public ScriptObject {
 public:
  Response();

  std::wstring text;      ///< what was written
  std::wstring redirect;  ///< where the page sends the browser instead
  std::wstring status;    ///< empty unless the page set it
  bool ended = false;     ///< the page ended itself

 private:
  HRESULT end();
};

/// The fields that came with a page's address or form.
using FormFields = std::vector<std::pair<std::wstring, std::wstring>>;

class Request : public ScriptObject {
 public:
  /// `method` is "GET" or "POST".
  Request(std::wstring_view method, FormFields query, FormFields form);

 private:
  void add_collection(std::wstring name, const FormFields& fields);

  FormFields query_;
  FormFields form_;
  FormFields variables_;
};

class Server : public ScriptObject {
 public:
  Server();
};

/// The objects of one thread's page. Application and Session stay from page to page.
struct PageObjects {
  com::Reference<NamedValues> application;
  com::Reference<NamedValues> session;
  com::Reference<Response> response;

  PageObjects();
};

/// The object that answers as the platform's application server: its `GetObjectContext` gives a context
/// whose `Item` gives the page's own objects.
class AppServer : public ScriptObject {
 public:
  explicit AppServer(PageObjects& page);
};

/// Makes the class of application servers by its program identifier known to the platform.
inline constexpr wchar_t app_server_program[] = L"MTxAS.AppServer.1";
inline constexpr wchar_t app_server_class[] = L"{71E38F91-7E88-11CF-9EDE-0080C78B7F89}";

/// A class factory whose objects `create` makes; it lives as long as the program.
IClassFactory& app_server_factory(std::function<IDispatch*()> create);

/// Makes `page`, which outlives the program's use of the platform, what the class leads to in this program.
HRESULT register_app_server(PageObjects& page);

}  // namespace pradelis::test
