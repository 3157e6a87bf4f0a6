#include "command/json_values.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "automation/classes.h"
#include "command/base64.h"
#include "dataaccess/iso_date.h"

namespace pradelis::command {
namespace {

constexpr int deepest = 100;

Json form(std::string_view name) { return {{"$", name}}; }

Json form(std::string_view name, Json value) { return {{"$", name}, {"value", std::move(value)}}; }

Json double_to_json(double value) {
  if (std::isfinite(value)) return value;
  return form("double", std::isnan(value) ? "NaN" : value > 0 ? "Infinity" : "-Infinity");
}

Json date_to_json(Date date) {
  char buffer[dataaccess::iso_date_size];
  std::string text(dataaccess::write_iso_date(date, false, buffer));
  text[text.find(' ')] = 'T';
  return form("date", std::move(text));
}

Json array_to_json(const Variant::Array& values) {
  Json json = Json::array();
  for (const Variant& value : values) json.push_back(to_json(value));
  return json;
}

Json object_to_json(const ObjectPtr& object) {
  const automation::ClassTable* table = object ? automation::find_table(*object) : nullptr;
  return {{"$", "object"}, {"class", table ? Json(table->name()) : Json(nullptr)}};
}

template <class Integer>
Variant number_from_json(const Json& json) {
  const auto number = json.get<Integer>();
  if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
  return static_cast<double>(number);
}

const std::string& text_of(const Json& json, const char* key) {
  const auto found = json.find(key);
  if (found == json.end() || !found->is_string()) {
    throw NotUnderstood("a forma " + json["$"].get<std::string>() + " pede o texto \"" + key + "\"");
  }
  return found->get_ref<const std::string&>();
}

Variant date_from_json(const Json& json) {
  const std::string& text = text_of(json, "value");
  const auto date = dataaccess::read_iso_date(text);
  if (!date) throw NotUnderstood("não é uma data (ano-mês-diaThora:minuto:segundo): " + text);
  return *date;
}

Variant bytes_from_json(const Json& json) {
  auto bytes = from_base64(text_of(json, "value"));
  if (!bytes) throw NotUnderstood("o valor de bytes não é base64");
  return std::move(*bytes);
}

Variant object_from_json(const Json& json, const ObjectByName& object_of) {
  const auto name = json.find("name");
  if (name != json.end() && name->is_null()) return ObjectPtr();
  return object_of(text_of(json, "name"));
}

Variant form_from_json(const Json& json, const ObjectByName& object_of) {
  const auto name = json.find("$");
  if (name == json.end() || !name->is_string())
    throw NotUnderstood("um objeto como valor pede a chave \"$\"");
  if (*name == "missing") return Variant::missing();
  if (*name == "empty") return {};
  if (*name == "date") return date_from_json(json);
  if (*name == "bytes") return bytes_from_json(json);
  if (*name == "object") return object_from_json(json, object_of);
  throw NotUnderstood("forma de valor desconhecida: " + name->get<std::string>());
}

Variant from_json(const Json& json, const ObjectByName& object_of, int depth) {
  if (depth > deepest) throw NotUnderstood("valores aninhados demais");
  switch (json.type()) {
    case Json::value_t::null:
      return Variant::null();
    case Json::value_t::boolean:
      return json.get<bool>();
    case Json::value_t::number_integer:
      return number_from_json<std::int64_t>(json);
    case Json::value_t::number_unsigned:
      return number_from_json<std::uint64_t>(json);
    case Json::value_t::number_float:
      return json.get<double>();
    case Json::value_t::string:
      return json.get<std::string>();
    case Json::value_t::array: {
      Variant::Array values;
      values.reserve(json.size());
      for (const Json& element : json) values.push_back(from_json(element, object_of, depth + 1));
      return values;
    }
    default:
      return form_from_json(json, object_of);
  }
}

}  // namespace

Json to_json(const Variant& value) {
  switch (value.type()) {
    case VariantType::Empty:
      return form("empty");
    case VariantType::Null:
      return nullptr;
    case VariantType::Missing:
      return form("missing");
    case VariantType::Boolean:
      return value.get<bool>();
    case VariantType::UInt8:
      return value.get<std::uint8_t>();
    case VariantType::Int16:
      return value.get<std::int16_t>();
    case VariantType::Int32:
      return value.get<std::int32_t>();
    case VariantType::Int64:
      return value.get<std::int64_t>();
    case VariantType::Double:
      return double_to_json(value.get<double>());
    case VariantType::Date:
      return date_to_json(value.get<Date>());
    case VariantType::Text:
      return value.get<std::string>();
    case VariantType::Bytes:
      return form("bytes", to_base64(value.get<Bytes>()));
    case VariantType::Array:
      return array_to_json(value.get<Variant::Array>());
    case VariantType::Object:
      return object_to_json(value.get<ObjectPtr>());
  }
  return nullptr;
}

Variant from_json(const Json& json, const ObjectByName& object_of) { return from_json(json, object_of, 0); }

}  // namespace pradelis::command
