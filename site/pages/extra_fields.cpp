#include "site/company_data.h"
#include "site/context.h"
#include "site/extra_field_data.h"
#include "site/pages/pages.h"

namespace pradelis::site {
namespace {

void show_fields(Context& context, const Form& form, const Company& company,
                 const std::vector<ExtraField>& fields, std::string rows) {
  if (form.refused()) context.response().status = 422;
  View view = form.view();
  view.set("page", company_address(company.id)).set("company", company.name);
  add_extra_fields(view, std::move(rows), stored_extra_fields(context, fields, company.id));
  context.show("extra_fields", "Campos adicionais", "empresas", std::move(view));
}

void ask_values(Context& context) {
  const Company company = read_company(context, context.id());
  const auto fields = read_extra_fields(context.crm(), false);
  show_fields(context, Form(), company, fields, extra_field_rows(context, fields, company.id));
}

void store_values(Context& context) {
  const Company company = read_company(context, context.id());
  const auto fields = read_extra_fields(context.crm(), false);
  const TypedFields typed = typed_extra_fields(context.request().form, fields);
  Form form;
  const TypedFields before = shown_extra_fields(context.request().form, fields);
  if (!store_extra_fields(context, form, fields, typed, before, company.id)) {
    return show_fields(context, form, company, fields, extra_field_rows(context, fields, typed));
  }
  context.redirect(company_address(company.id), "Campos adicionais salvos.");
}

}  // namespace

void add_extra_field_pages(Router& router) {
  router.get("/empresas/{}/campos", ask_values);
  router.post("/empresas/{}/campos", store_values);
}

}  // namespace pradelis::site
