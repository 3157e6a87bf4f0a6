#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "values/error.h"

namespace pradelis::component {

/// Raises an error with exactly this number, source and description.
[[noreturn]] void RaiseError(std::int32_t number, const std::string& source, const std::string& description);

/// Raises what is being handled again, under `source`: number and description are kept; exceptions
/// that are no `Error` get the number and text that the platform has for them.
/// To be called in a catch block only.
[[noreturn]] void raise_again(std::string source);

/// Runs the body of a public method, and reports its failure as every method does: `release` lets go
/// of what the method holds, then the failure is raised again with the source `prefix` + `method`.
template <class Body, class Release>
decltype(auto) reporting(std::string_view prefix, std::string_view method, Body&& body, Release&& release) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    release();
    raise_again(std::string(prefix).append(method));
  }
}

/// The same for a method that holds nothing but locals.
template <class Body>
decltype(auto) reporting(std::string_view prefix, std::string_view method, Body&& body) {
  return reporting(prefix, method, std::forward<Body>(body), []() noexcept {});
}

}  // namespace pradelis::component
