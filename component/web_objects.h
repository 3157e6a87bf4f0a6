#pragma once

#include <functional>
#include <memory>
#include <string>

#include "values/variant.h"

/// What the component needs of the web server. The host of a thread (a web site, a script runner, the
/// application server of the platform) supplies the objects of the request that the thread serves.
namespace pradelis::component {

/// Variables shared by all requests of a web application.
class Application : public Object {
 public:
  /// The variable's value; Empty when there is none of this name. Names match whatever their case.
  virtual Variant Value(const std::string& name) = 0;
};
using ApplicationPtr = std::shared_ptr<Application>;

/// The page that the request is answered with.
class Response : public Object {
 public:
  /// Adds HTML (UTF-8) to the page, as it is.
  virtual void Write(const std::string& html) = 0;
};
using ResponsePtr = std::shared_ptr<Response>;

/// Values kept for one visitor between requests.
class Session : public Object {
 public:
  /// The value; Empty when there is none of this name. Names match whatever their case.
  virtual Variant Value(const std::string& name) = 0;
};
using SessionPtr = std::shared_ptr<Session>;

/// The context of the request that the calling thread serves.
class ObjectContext : public Object {
 public:
  /// The intrinsic object called `name`: "Application", "Response" or "Session".
  /// Raises an error when the context has none.
  virtual ObjectPtr Item(const std::string& name) = 0;
};
using ObjectContextPtr = std::shared_ptr<ObjectContext>;

/// The component services' entry object.
class AppServer : public Object {
 public:
  virtual ObjectContextPtr GetObjectContext() = 0;
};
using AppServerPtr = std::shared_ptr<AppServer>;

/// Says how the calling thread obtains its `AppServer`. A host calls it on each of its threads before
/// the first object is created there. The thread's present `AppServer`, if any, is let go.
void set_app_server_factory(std::function<AppServerPtr()> factory);

}  // namespace pradelis::component
