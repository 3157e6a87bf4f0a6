#include "component/registry.h"

#include <array>
#include <memory>

#include "component/crm.h"
#include "component/thread_state.h"
#include "values/error.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

struct CreatableClass {
  std::string_view program_identifier;
  ObjectPtr (*create)();
};

template <class Class>
ObjectPtr create() {
  return std::make_shared<Class>();
}

constexpr std::array<CreatableClass, 4> creatable_classes{{
    {"Pradelis.CRM", &create<CRM>},
    {"Pradelis.PessoaJuridica", &create<PessoaJuridica>},
    {"Pradelis.Vendedor", &create<Vendedor>},
    {"Pradelis.GrupoUsuarios", &create<GrupoUsuarios>},
}};

}  // namespace

const std::vector<std::string_view>& program_identifiers() {
  static const std::vector<std::string_view> identifiers = [] {
    std::vector<std::string_view> found;
    for (const CreatableClass& creatable : creatable_classes) found.push_back(creatable.program_identifier);
    return found;
  }();
  return identifiers;
}

ObjectPtr create_object(std::string_view program_identifier) {
  for (const CreatableClass& creatable : creatable_classes) {
    if (!equal_ignoring_case(creatable.program_identifier, program_identifier)) continue;
    if (!thread_state().quelcor) Main();
    return creatable.create();
  }
  raise(error_number::cannot_create_object);
}

}  // namespace pradelis::component
