#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "values/variant.h"

/// Values in the JSON of `pradelis call`: null, true and false, numbers, texts and arrays as they are;
/// what JSON has no form for as an object with the key "$".
namespace pradelis::command {

using Json = nlohmann::ordered_json;

/// A request that the command does not understand. `what()` says why, in Portuguese.
class NotUnderstood : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

Json to_json(const Variant& value);

/// Gives the object of a name.
using ObjectByName = std::function<ObjectPtr(const std::string& name)>;

/// A whole number that fits is a 32-bit integer, every other one a double. Raises `NotUnderstood` for
/// a form that there is not, and for values nested more than 100 deep; and what `object_of` raises.
Variant from_json(const Json& json, const ObjectByName& object_of);

}  // namespace pradelis::command
