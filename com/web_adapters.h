#pragma once

#include "component/web_objects.h"

namespace pradelis::com {

/// The application server of the platform ("MTxAS.AppServer.1"), whose object context leads to the
/// objects of the page that the calling thread serves. Raises error 429 when it cannot be created.
component::AppServerPtr platform_app_server();

}  // namespace pradelis::com
