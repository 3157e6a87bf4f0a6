#include "site/choice_lists.h"

#include "dataaccess/schema/fixed.h"
#include "site/component_text.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/transaction.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

const RecordRow lists_row{"item", fixed::system_object};

/// A list that was made here; refuses with 404 any other.
ChoiceList read_list(Context& context, std::int32_t id) {
  for (ChoiceList& list : read_lists(context.crm())) {
    if (list.id == id && !list.name.empty()) return std::move(list);
  }
  throw Refusal{404};
}

Form name_form() {
  Form form;
  form.text("nome", "Nome").required().shown_by_component();
  return form;
}

void show_new_list(Context& context, const Form& form) {
  context.show_form(form, {"Nova lista de opções", "equipe", "Criar lista", fields_trail()});
}

void ask_list(Context& context) {
  context.require_maintenance();
  show_new_list(context, name_form());
}

void create_list(Context& context) {
  context.require_maintenance();
  Form form = name_form();
  component::CRM& crm = context.crm();
  const bool done = form.read(context.request().form) && attempt_whole(crm, lists_row, form, [&] {
                      add_choice_list(crm, form.text_of("nome"), context.person());
                    });
  if (!done) return show_new_list(context, form);
  context.redirect("/campos", "Lista criada.");
}

void show_new_entry(Context& context, const Form& form, const ChoiceList& list) {
  context.show_form(form,
                    {"Incluir opção", "equipe", "Incluir", fields_trail(), "Na lista " + list.name + "."});
}

void ask_entry(Context& context) {
  context.require_maintenance();
  show_new_entry(context, name_form(), read_list(context, context.id()));
}

void add_entry_to_list(Context& context) {
  context.require_maintenance();
  const ChoiceList list = read_list(context, context.id());
  Form form = name_form();
  if (form.read(context.request().form)) {
    refuse_if_listed(form, read_choices(context.crm(), list.id));
  }
  const bool done = !form.refused() && attempt_whole(context.crm(), lists_row, form, [&] {
    add_category(context.crm(), list.id, to_component_text(form.text_of("nome")), context.person());
  });
  if (!done) return show_new_entry(context, form, list);
  context.redirect("/campos", "Incluído na lista.");
}

}  // namespace

void add_choice_list_pages(Router& router) {
  router.get("/campos/listas/nova", ask_list);
  router.post("/campos/listas/nova", create_list);
  router.get("/campos/listas/{}/nova", ask_entry);
  router.post("/campos/listas/{}/nova", add_entry_to_list);
}

}  // namespace pradelis::site
