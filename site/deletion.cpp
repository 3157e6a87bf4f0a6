#include "site/deletion.h"

#include "dataaccess/schema/fixed.h"
#include "site/transaction.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

Form confirmation(const Deletion& deletion) {
  std::string state = deletion.refusal + "\n";
  for (const DeletedObject& object : deletion.objects) state += concat(object.id, " ");
  Form form;
  if (!deletion.refusal.empty()) form.refuse(deletion.refusal);
  return form.guard(state);
}

void show(Context& context, const Form& form, const Deletion& deletion) {
  FormPage page{deletion.title, deletion.area, deletion.title, deletion.trail};
  page.lead =
      "“" + deletion.objects.back().name + "” sai de todas as listas e fica no registro de excluídos.";
  if (deletion.objects.size() > 1) page.lead += " O que fica abaixo sai junto:";
  page.danger = true;
  page.details = deletion.details;
  context.show_form(form, page);
}

}  // namespace

void enter_deletion(Context& context, const DeletedObject& object) {
  context.crm().Excluir(object.name, "", context.person(), now(), dataaccess::fixed::application,
                        object.item_class, object.id);
}

void ask_deletion(Context& context, const Deletion& deletion) {
  show(context, confirmation(deletion), deletion);
}

void carry_out_deletion(Context& context, Deletion (*read)(Context&)) {
  const Deletion deletion = read(context);
  Form form = confirmation(deletion);
  const auto present = [&] { return confirmation(read(context)); };
  const bool done = form.read(context.request().form) &&
                    change_record(context.crm(), {"item", deletion.objects.back().id}, form, present, [&] {
                      for (const DeletedObject& object : deletion.objects) enter_deletion(context, object);
                    });
  if (!done) return show(context, form, read(context));
  context.redirect(deletion.after, "Excluído: " + deletion.objects.back().name + ".");
}

}  // namespace pradelis::site
