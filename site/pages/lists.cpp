#include <array>

#include "site/context.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/transaction.h"

namespace pradelis::site {
namespace {

/// A list that the maintenance user keeps on the site.
struct KeptList {
  const char* name;  ///< in addresses
  const char* title;
  const char* of_what;
  ReferenceList list;
};

constexpr std::array<KeptList, 4> kept_lists = {{
    {"cargos", "Cargos de contatos", "cargo", ReferenceList::Roles},
    {"classes", "Classes de produto", "classe de produto", ReferenceList::ProductClasses},
    {"motivos", "Motivos de perda", "motivo de perda", ReferenceList::LossReasons},
    {"atividades", "Tipos de atividade", "tipo de atividade", ReferenceList::ActivityKinds},
}};

void show_lists(Context& context) {
  context.require_maintenance();
  std::vector<View> views;
  for (const KeptList& kept : kept_lists) {
    std::vector<View> names;
    for (const Option& entry : entries(context.crm(), kept.list))
      names.push_back(View().set("name", entry.label).set("id", std::to_string(entry.id)));
    View view;
    view.set("heading", kept.title).set("address", std::string("/listas/") + kept.name + "/nova");
    view.flag("none", names.empty()).list("entries", std::move(names));
    views.push_back(std::move(view));
  }
  context.show("lists", "Listas", "equipe", View().list("lists", std::move(views)));
}

template <std::size_t index>
void show_addition(Context& context, const Form& form) {
  context.show_form(form, {std::string("Incluir ") + kept_lists[index].of_what,
                           "equipe",
                           "Incluir",
                           {{"/equipe", "Equipe"}, {"/listas", "Listas"}}});
}

Form entry_form() {
  Form form;
  form.text("nome", "Nome").required();
  return form;
}

template <std::size_t index>
void ask_entry(Context& context) {
  context.require_maintenance();
  show_addition<index>(context, entry_form());
}

template <std::size_t index>
void add_entry_page(Context& context) {
  context.require_maintenance();
  Form form = entry_form();
  if (form.read(context.request().form))
    refuse_if_listed(form, entries(context.crm(), kept_lists[index].list));
  const RecordRow list{"item", static_cast<std::int32_t>(kept_lists[index].list)};
  const bool done = !form.refused() && attempt_whole(context.crm(), list, form, [&] {
    add_entry(context.crm(), kept_lists[index].list, form.text_of("nome"), context.person());
  });
  if (!done) return show_addition<index>(context, form);
  context.redirect("/listas", "Incluído na lista.");
}

template <std::size_t index>
void add_list(Router& router) {
  const std::string address = std::string("/listas/") + kept_lists[index].name + "/nova";
  router.get(address, ask_entry<index>);
  router.post(address, add_entry_page<index>);
}

}  // namespace

void add_list_pages(Router& router) {
  router.get("/listas", show_lists);
  add_list<0>(router);
  add_list<1>(router);
  add_list<2>(router);
  add_list<3>(router);
}

}  // namespace pradelis::site
