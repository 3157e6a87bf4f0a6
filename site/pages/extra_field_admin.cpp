#include <algorithm>

#include "dataaccess/schema/fixed.h"
#include "site/choice_lists.h"
#include "site/component_text.h"
#include "site/context.h"
#include "site/extra_field_data.h"
#include "site/pages/pages.h"
#include "site/rows.h"
#include "site/transaction.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

const char* type_text(const ExtraField& field) {
  if (field.list != 0) return "Lista";
  switch (field.type) {
    case FieldType::Date:
      return "Data";
    case FieldType::Number:
      return "Número";
    case FieldType::Reference:
      return "Referência";
    default:
      return "Texto";
  }
}

void show_fields(Context& context) {
  context.require_maintenance();
  component::CRM& crm = context.crm();
  const auto lists = read_lists(crm);
  const auto fields = read_extra_fields(crm, true);
  std::vector<View> field_views;
  for (const ExtraField& field : fields) {
    View view;
    view.set("id", std::to_string(field.id)).set("label", field.label).set("type", type_text(field));
    view.flag("visible", field.visible).flag("first", &field == &fields.front());
    view.flag("last", &field == &fields.back()).flag("list", false);
    for (const ChoiceList& list : lists) {
      if (list.id == field.list) view.set("list", list_name(list));
    }
    field_views.push_back(std::move(view));
  }
  std::vector<View> list_views;
  for (const ChoiceList& list : lists) {
    std::vector<View> names;
    for (const Option& entry : read_choices(crm, list.id))
      names.push_back(View().set("entry", entry.label).set("choice", std::to_string(entry.id)));
    View view;
    view.set("name", list_name(list)).set("id", std::to_string(list.id)).flag("ours", !list.name.empty());
    view.flag("empty", names.empty()).list("entries", std::move(names));
    list_views.push_back(std::move(view));
  }
  View view;
  view.flag("none", field_views.empty()).list("fields", std::move(field_views));
  view.flag("no_lists", list_views.empty()).list("lists", std::move(list_views));
  context.show("fields", "Campos adicionais", "equipe", std::move(view));
}

/// What a new field may be, as the choice "tipo" offers it. The last one takes a list.
std::vector<Option> type_options() {
  return {{1, "Texto"}, {3, "Data"}, {4, "Número"}, {2, "Lista de opções"}};
}

Form field_form(Context& context, bool registering) {
  Form form;
  form.text("rotulo", "Rótulo").required().limit(80).shown_by_component();
  if (!registering) return form;
  form.choice("tipo", "O que se escreve nele", type_options())
      .required()
      .half()
      .hint("Não muda depois: os valores já escritos ficariam sem lugar.");
  std::vector<Option> lists;
  for (const ChoiceList& list : read_lists(context.crm())) lists.push_back({list.id, list_name(list)});
  form.choice("lista", "Lista", std::move(lists)).half().hint("Só para campos com lista de opções.");
  return form;
}

bool read_new_field(Context& context, Form& form) {
  if (!form.read(context.request().form)) return false;
  const bool lists = form.id_of("tipo") == static_cast<std::int32_t>(FieldType::Reference);
  if (lists && form.id_of("lista") == 0) form.refuse("lista", "Escolha a lista.");
  if (!lists && form.id_of("lista") != 0) form.refuse("lista", "Só campos com lista de opções têm lista.");
  return !form.refused();
}

void show_registration(Context& context, const Form& form) {
  context.show_form(form, {"Novo campo adicional", "equipe", "Criar campo", fields_trail()});
}

void ask_field(Context& context) {
  context.require_maintenance();
  show_registration(context, field_form(context, true));
}

void define_field(Context& context) {
  context.require_maintenance();
  Form form = field_form(context, true);
  const bool done =
      read_new_field(context, form) && attempt(form, [&] {
        component::CRM& crm = context.crm();
        const auto last = single_value(
            crm, concat("select max(ordem) from dadoadicional where ritem = ", fixed::class_company));
        const std::int32_t list = form.id_of("lista");
        append_row(crm, "dadoadicional", [&](dataaccess::Recordset& row) {
          row.set("oid", crm.QLCBase()->NovoOid());
          row.set("ritem", fixed::class_company);
          row.set("valor", to_component_text(form.text_of("rotulo")));
          row.set("rtipo", form.id_of("tipo"));
          row.set("rlista", list == 0 ? fixed::system_object : list);
          row.set("visivel", 1);
          row.set("ordem", last.is_null() ? 1 : to_int32(last) + 1);
        });
      });
  if (!done) return show_registration(context, form);
  context.redirect("/campos", "Campo criado.");
}

/// A field of companies; refuses with 404 any other.
ExtraField read_field(Context& context) {
  context.require_maintenance();
  for (ExtraField& field : read_extra_fields(context.crm(), true)) {
    if (field.id == context.id()) return std::move(field);
  }
  throw Refusal{404};
}

void set_column(component::CRM& crm, std::int32_t field, const char* column, const Variant& value) {
  change_row(crm, concat("select ", column, " from dadoadicional where oid = ", field),
             [&](dataaccess::Recordset& row) { row.set(column, value); });
}

void show_change(Context& context, const Form& form) {
  context.show_form(form, {"Alterar campo adicional", "equipe", "Salvar alterações", fields_trail()});
}

/// The form of a field as it is stored.
Form change_form(Context& context, const ExtraField& field) {
  return field_form(context, false).fill("rotulo", field.label).guard();
}

void ask_change(Context& context) { show_change(context, change_form(context, read_field(context))); }

void change_field(Context& context) {
  const ExtraField field = read_field(context);
  Form form = change_form(context, field);
  const auto present = [&] { return change_form(context, read_field(context)); };
  const bool done = form.read(context.request().form) &&
                    change_record(context.crm(), {"dadoadicional", field.id}, form, present, [&] {
                      set_column(context.crm(), field.id, "valor", to_component_text(form.text_of("rotulo")));
                    });
  if (!done) return show_change(context, form);
  context.redirect("/campos", "Alterações salvas.");
}

template <bool visible>
void set_visible(Context& context) {
  const ExtraField field = read_field(context);
  set_column(context.crm(), field.id, "visivel", visible ? 1 : 0);
  context.redirect("/campos", visible ? "O campo voltou aos formulários."
                                      : "O campo não aparece mais; os valores ficam guardados.");
}

/// Moves a field one place, and numbers all in their new order.
template <int step>
void move_field(Context& context) {
  const ExtraField moved = read_field(context);
  component::CRM& crm = context.crm();
  auto fields = read_extra_fields(crm, true);
  const auto from = std::find_if(fields.begin(), fields.end(),
                                 [&](const ExtraField& field) { return field.id == moved.id; });
  const bool at_end = step < 0 ? from == fields.begin() : from + 1 == fields.end();
  if (!at_end) std::iter_swap(from, from + step);
  std::int32_t place = 0;
  for (const ExtraField& field : fields) set_column(crm, field.id, "ordem", ++place);
  context.redirect("/campos");
}

}  // namespace

void add_extra_field_admin_pages(Router& router) {
  router.get("/campos", show_fields);
  router.get("/campos/novo", ask_field);
  router.post("/campos/novo", define_field);
  router.get("/campos/{}/alterar", ask_change);
  router.post("/campos/{}/alterar", change_field);
  router.post("/campos/{}/ocultar", set_visible<false>);
  router.post("/campos/{}/mostrar", set_visible<true>);
  router.post("/campos/{}/subir", move_field<-1>);
  router.post("/campos/{}/descer", move_field<1>);
}

}  // namespace pradelis::site
