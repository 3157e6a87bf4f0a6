#pragma once

#include <cstdint>
#include <utility>

#include "com/platform.h"
#include "values/error.h"

namespace pradelis::com {

/// The platform's code for an error number: numbers up to 65535 are those that scripts read as they
/// are; the others are such codes already.
HRESULT code_of(std::int32_t number) noexcept;

/// The error number that a script reads for one of the platform's codes.
std::int32_t number_of(HRESULT code) noexcept;

/// What is being handled, as an `Error`. To be called in a catch block only.
Error current_error();

/// Leaves `error` for a caller through a table of functions: he gets the code and asks for the rest.
HRESULT leave_error_info(const Error& error, REFIID interface_id) noexcept;

/// Fills what a caller by name reads after a failure; `info` may be null. Gives what he is told.
HRESULT fill_exception(const Error& error, EXCEPINFO* info) noexcept;

/// The error that an object of somebody else raised in a call by name. Frees the texts of `info`.
Error error_of(HRESULT code, EXCEPINFO& info);

/// Runs a body that gives a code of the platform. No exception leaves it: each becomes a code.
template <class Body>
HRESULT guarded(Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    try {
      return code_of(current_error().number());
    } catch (...) {
      return E_OUTOFMEMORY;
    }
  }
}

}  // namespace pradelis::com
