#include "com/web_adapters.h"

#include "com/foreign_object.h"
#include "com/variant_in.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::com {
namespace {

using ForeignObjectPtr = std::shared_ptr<ForeignObject>;

/// The object that `value` must refer to.
ForeignObjectPtr foreign_object(const Variant& value) {
  auto object = std::dynamic_pointer_cast<ForeignObject>(value.get<ObjectPtr>());
  if (!object) raise(error_number::object_not_set);
  return object;
}

/// Application and Session: named values.
template <class Intrinsic>
class NamedValues : public Intrinsic {
 public:
  explicit NamedValues(ForeignObjectPtr object)
      : object_(std::move(object)), value_(object_->id_of(L"Value")) {}

  Variant Value(const std::string& name) override { return object_->read(value_, {name}); }

 private:
  ForeignObjectPtr object_;
  DISPID value_;
};

class PageResponse : public component::Response {
 public:
  explicit PageResponse(ForeignObjectPtr object)
      : object_(std::move(object)), write_(object_->id_of(L"Write")) {}

  void Write(const std::string& html) override { object_->read(write_, {html}); }

 private:
  ForeignObjectPtr object_;
  DISPID write_;
};

class PageContext : public component::ObjectContext {
 public:
  explicit PageContext(ForeignObjectPtr object) : object_(std::move(object)) {}

  ObjectPtr Item(const std::string& name) override {
    ForeignObjectPtr item = foreign_object(object_->read(object_->id_of(L"Item"), {name}));
    if (equal_ignoring_case(name, "Application")) {
      return std::make_shared<NamedValues<component::Application>>(std::move(item));
    }
    if (equal_ignoring_case(name, "Session")) {
      return std::make_shared<NamedValues<component::Session>>(std::move(item));
    }
    if (equal_ignoring_case(name, "Response")) return std::make_shared<PageResponse>(std::move(item));
    return item;
  }

 private:
  ForeignObjectPtr object_;
};

class PlatformAppServer : public component::AppServer {
 public:
  explicit PlatformAppServer(ForeignObjectPtr object) : object_(std::move(object)) {}

  component::ObjectContextPtr GetObjectContext() override {
    return std::make_shared<PageContext>(foreign_object(object_->read(object_->id_of(L"GetObjectContext"))));
  }

 private:
  ForeignObjectPtr object_;
};

}  // namespace

component::AppServerPtr platform_app_server() {
  CLSID class_id;
  Reference<IDispatch> server;
  if (FAILED(CLSIDFromProgID(L"MTxAS.AppServer.1", &class_id)) ||
      FAILED(CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              server.untyped_receiver()))) {
    raise(error_number::cannot_create_object);
  }
  return std::make_shared<PlatformAppServer>(std::make_shared<ForeignObject>(std::move(server)));
}

}  // namespace pradelis::com
