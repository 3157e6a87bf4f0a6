#include "component/error_reporting.h"

#include <exception>
#include <new>

namespace pradelis::component {

void RaiseError(std::int32_t number, const std::string& source, const std::string& description) {
  throw Error(number, source, description);
}

void raise_again(std::string source) {
  try {
    throw;
  } catch (const Error& error) {
    RaiseError(error.number(), source, error.description());
  } catch (const std::bad_alloc&) {
    RaiseError(error_number::out_of_memory, source, std::string(platform_text(error_number::out_of_memory)));
  } catch (const std::exception& error) {
    RaiseError(error_number::database_failed, source, error.what());
  } catch (...) {
    RaiseError(error_number::database_failed, source,
               std::string(platform_text(error_number::database_failed)));
  }
}

}  // namespace pradelis::component
