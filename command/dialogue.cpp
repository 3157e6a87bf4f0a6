#include "command/dialogue.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <span>

#include "component/error_reporting.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::command {
namespace {

using automation::Use;

Json parse(std::string_view request) {
  try {
    return Json::parse(request);
  } catch (const Json::parse_error& failure) {
    throw NotUnderstood("JSON malformado na posição " + std::to_string(failure.byte));
  } catch (const Json::out_of_range&) {
    throw NotUnderstood("número grande demais");
  }
}

/// Refuses what a request has beside its verb and the keys that go with it: a misspelt key must not
/// pass for an omitted one.
void expect_keys(const Json& request, const char* verb, std::initializer_list<std::string_view> keys) {
  for (const auto& [key, value] : request.items()) {
    if (key != verb && std::find(keys.begin(), keys.end(), key) == keys.end()) {
      throw NotUnderstood("chave desconhecida em \"" + std::string(verb) + "\": " + key);
    }
  }
}

const std::string& text_at(const Json& request, const char* key) {
  const auto found = request.find(key);
  if (found == request.end() || !found->is_string()) {
    throw NotUnderstood("falta o texto \"" + std::string(key) + "\"");
  }
  return found->get_ref<const std::string&>();
}

/// The name under "as", if there is one.
std::string new_name(const Json& request) {
  if (!request.contains("as")) return {};
  const std::string& name = text_at(request, "as");
  if (name.empty() || name.find('.') != std::string::npos) throw NotUnderstood("nome que não serve: " + name);
  return name;
}

Json done() { return {{"ok", true}}; }

Json error_to_json(const Error& error) {
  return {{"error",
           {{"number", error.number()}, {"source", error.source()}, {"description", error.description()}}}};
}

Json values_to_json(std::span<const Variant> values) {
  Json json = Json::array();
  for (const Variant& value : values) json.push_back(to_json(value));
  return json;
}

}  // namespace

std::string Dialogue::answer(std::string_view request) {
  Json json;
  try {
    try {
      json = answer_to(parse(request));
    } catch (const NotUnderstood&) {
      throw;
    } catch (const Error&) {
      throw;
    } catch (...) {
      component::raise_again({});
    }
  } catch (const NotUnderstood& why) {
    all_understood_ = false;
    json = {{"invalid", why.what()}};
  } catch (const Error& error) {
    json = error_to_json(error);
  }
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json Dialogue::answer_to(const Json& request) {
  struct Verb {
    const char* name;
    Json (Dialogue::*answer)(const Json& request);
  };
  static constexpr std::array verbs = {
      Verb{"new", &Dialogue::create},
      Verb{"call", &Dialogue::call},
      Verb{"get", &Dialogue::get},
      Verb{"set", &Dialogue::set},
      Verb{"rows", &Dialogue::rows},
      Verb{"session", &Dialogue::set_session},
      Verb{"application", &Dialogue::set_application},
      Verb{"written", &Dialogue::written},
      Verb{"release", &Dialogue::release},
  };
  if (!request.is_object()) throw NotUnderstood("não é um objeto JSON");
  const auto verb =
      std::find_if(verbs.begin(), verbs.end(), [&](const Verb& v) { return request.contains(v.name); });
  if (verb == verbs.end()) throw NotUnderstood("pedido desconhecido");
  return (this->*verb->answer)(request);
}

Json Dialogue::create(const Json& request) {
  expect_keys(request, "new", {"as"});
  const std::string& program_identifier = text_at(request, "new");
  text_at(request, "as");
  bind(new_name(request), host_.create(program_identifier));
  return done();
}

Json Dialogue::call(const Json& request) {
  expect_keys(request, "call", {"args", "as"});
  return read(request, "call", true);
}

Json Dialogue::get(const Json& request) {
  expect_keys(request, "get", {"args", "as"});
  return read(request, "get", request.contains("args"));
}

Json Dialogue::read(const Json& request, const char* verb, bool with_arguments) {
  const std::string& path = text_at(request, verb);
  const std::string name = new_name(request);
  std::vector<Variant> arguments = arguments_of(request);
  Json json;
  try {
    const Target target = target_of(path);
    const Variant result = host_.invoke(*target.object, target.member, Use::Read, arguments);
    if (!name.empty() && result.is(VariantType::Object)) {
      bind(name, to_object(result));
      json = done();
    } else {
      json = {{"result", to_json(result)}, {"type", automation::type_name(result.type())}};
    }
  } catch (const Error& error) {
    json = error_to_json(error);
  }
  if (with_arguments) json["args"] = values_to_json(arguments);
  return json;
}

Json Dialogue::set(const Json& request) {
  expect_keys(request, "set", {"args", "value"});
  const std::string& path = text_at(request, "set");
  if (!request.contains("value")) throw NotUnderstood("falta \"value\"");
  std::vector<Variant> arguments = arguments_of(request);
  arguments.push_back(value_of(request["value"]));
  const Target target = target_of(path);
  const Use use = arguments.back().is(VariantType::Object) ? Use::Set : Use::Let;
  host_.invoke(*target.object, target.member, use, arguments);
  return done();
}

Json Dialogue::rows(const Json& request) {
  expect_keys(request, "rows", {"limit"});
  const std::string& path = text_at(request, "rows");
  std::int64_t limit = ScriptHost::all_rows;
  if (request.contains("limit")) {
    if (!request["limit"].is_number_unsigned()) throw NotUnderstood("\"limit\" não é um número de linhas");
    limit = request["limit"].get<std::int64_t>();
  }
  if (path.find('.') == std::string::npos) return host_.rows(object_of(path), limit);
  const Target target = target_of(path);
  return host_.rows(to_object(host_.invoke(*target.object, target.member, Use::Read, {})), limit);
}

Json Dialogue::set_session(const Json& request) {
  expect_keys(request, "session", {});
  if (!request["session"].is_object()) throw NotUnderstood("\"session\" pede um objeto de nomes e valores");
  for (const auto& [name, value] : request["session"].items()) host_.set_session(name, value_of(value));
  return done();
}

Json Dialogue::set_application(const Json& request) {
  expect_keys(request, "application", {});
  if (!request["application"].is_object()) {
    throw NotUnderstood("\"application\" pede um objeto de nomes e valores");
  }
  for (const auto& [name, value] : request["application"].items()) {
    host_.set_application(name, value_of(value));
  }
  return done();
}

Json Dialogue::written(const Json& request) {
  expect_keys(request, "written", {});
  if (request["written"] != true) throw NotUnderstood("\"written\" pede true");
  return {{"written", host_.take_written()}};
}

Json Dialogue::release(const Json& request) {
  expect_keys(request, "release", {});
  const std::string& name = text_at(request, "release");
  object_of(name);
  objects_.erase(name);
  return done();
}

ObjectPtr Dialogue::object_of(const std::string& name) const {
  const auto found = objects_.find(name);
  if (found == objects_.end()) raise(error_number::object_not_set, "Não há objeto com o nome " + name);
  return found->second;
}

Dialogue::Target Dialogue::target_of(const std::string& path) const {
  const std::vector<std::string_view> names = split(path, '.');
  if (names.size() < 2 || std::find(names.begin(), names.end(), "") != names.end()) {
    throw NotUnderstood("não é \"objeto.membro\": " + path);
  }
  ObjectPtr object = object_of(std::string(names.front()));
  for (std::size_t i = 1; i + 1 < names.size(); ++i) {
    object = to_object(host_.invoke(*object, names[i], Use::Read, {}));
  }
  return {std::move(object), std::string(names.back())};
}

Variant Dialogue::value_of(const Json& json) const {
  return from_json(json, [this](const std::string& name) { return object_of(name); });
}

std::vector<Variant> Dialogue::arguments_of(const Json& request) const {
  std::vector<Variant> arguments;
  const auto found = request.find("args");
  if (found == request.end()) return arguments;
  if (!found->is_array()) throw NotUnderstood("\"args\" não é uma lista");
  arguments.reserve(found->size() + 1);
  for (const Json& value : *found) arguments.push_back(value_of(value));
  return arguments;
}

void Dialogue::bind(const std::string& name, ObjectPtr object) {
  objects_.insert_or_assign(name, std::move(object));
}

}  // namespace pradelis::command
