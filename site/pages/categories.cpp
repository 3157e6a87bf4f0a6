#include <algorithm>
#include <set>

#include "dataaccess/schema/fixed.h"
#include "site/category_data.h"
#include "site/company_data.h"
#include "site/component_html.h"
#include "site/component_text.h"
#include "site/context.h"
#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "site/transaction.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

namespace fixed = dataaccess::fixed;

constexpr std::int16_t root_indent = 0;

using Ids = std::set<std::int32_t>;

Ids present_categories(component::CRM& crm, std::int32_t company) {
  Ids ids;
  for (const Option& category : categories_of(crm, company)) ids.insert(category.id);
  return ids;
}

/// The tree that the component writes, with these categories ticked.
std::string tree(Context& context, const Ids& ticked) {
  take_component_html();
  const std::string list = join_identifiers({ticked.begin(), ticked.end()});
  context.crm().cPessoaJuridica()->Montar_Arv_Classif("categoria", root_indent, list);
  return take_component_html();
}

void show_choice(Context& context, const Form& form, const Company& company, const Ids& before,
                 const Ids& ticked) {
  if (form.refused()) context.response().status = 422;
  View view = form.view();
  view.set("page", company_address(company.id)).set("company", company.name);
  view.set("before", join_identifiers({before.begin(), before.end()})).set("tree", tree(context, ticked));
  view.flag("none", read_categories(context.crm()).empty()).flag("maintenance", context.user().maintenance);
  context.show("company_categories", "Categorias", "empresas", std::move(view));
}

void ask_choice(Context& context) {
  const Company company = read_company(context, context.id());
  const Ids present = present_categories(context.crm(), company.id);
  show_choice(context, Form(), company, present, present);
}

void unclassify(component::CRM& crm, std::int32_t company, std::int32_t category) {
  crm.Executar(concat("select * from classificacao where ritem = ", company, " and rcategoria = ", category),
               dataaccess::CursorType::Dynamic, dataaccess::LockType::Optimistic);
  const dataaccess::RecordsetPtr rows = std::exchange(crm.rs, nullptr);
  // The same pair may stand there several times.
  for (; !rows->Eof(); rows->MoveNext()) rows->Delete();
  rows->Close();
}

/// Changes what the visitor changed: what somebody else ticked or took off meanwhile stays so.
void store_choice(Context& context) {
  const Company company = read_company(context, context.id());
  component::CRM& crm = context.crm();
  const Parameters& posted = context.request().form;
  Ids chosen;
  for (const std::string& text : posted.all("categoria")) chosen.insert(parse_identifier(text).value_or(0));
  const auto shown = parse_identifiers(posted.get("antes")).value_or(std::vector<std::int32_t>());
  const Ids before(shown.begin(), shown.end());
  const Ids present = present_categories(crm, company.id);
  const auto categories = read_categories(crm);
  Form form;
  for (const std::int32_t id : chosen) {
    const bool offered = std::any_of(categories.begin(), categories.end(),
                                     [&](const Category& category) { return category.id == id; });
    if (!offered && !present.contains(id)) form.refuse("Escolha entre as categorias oferecidas.");
  }
  const bool done = !form.refused() && attempt_whole(crm, {"item", company.id}, form, [&] {
    const Ids now = present_categories(crm, company.id);
    for (const std::int32_t id : chosen) {
      if (!before.contains(id) && !now.contains(id)) crm.Cadastrar_Classificacao(company.id, id);
    }
    for (const std::int32_t id : before) {
      if (!chosen.contains(id) && now.contains(id)) unclassify(crm, company.id, id);
    }
  });
  if (!done) return show_choice(context, form, company, before, chosen);
  context.redirect(company_address(company.id), "Categorias salvas.");
}

// The tree itself

const std::vector<Link>& tree_trail() {
  static const std::vector<Link> trail = {{"/equipe", "Equipe"}, {"/categorias", "Categorias"}};
  return trail;
}

/// "Comércio › Padarias": a category and those above it.
std::vector<Option> paths(const std::vector<Category>& categories) {
  std::vector<Option> options;
  std::vector<std::string> above;
  for (const Category& category : categories) {
    const auto depth = static_cast<std::size_t>(category.depth);
    above.resize(depth);
    above.push_back(depth == 0 ? category.name : above.back() + " › " + category.name);
    options.push_back({category.id, above.back()});
  }
  return options;
}

void show_tree(Context& context) {
  context.require_maintenance();
  std::vector<View> views;
  for (const Option& path : paths(read_categories(context.crm()))) {
    views.push_back(View().set("path", path.label).set("id", std::to_string(path.id)));
  }
  View view;
  view.flag("none", views.empty()).list("categories", std::move(views));
  context.show("categories", "Categorias", "equipe", std::move(view));
}

Form category_form(Context& context, bool registering) {
  Form form;
  form.text("nome", "Nome").required().shown_by_component();
  if (registering) {
    form.choice("pai", "Abaixo de", paths(read_categories(context.crm())))
        .hint("Sem escolha, a categoria fica no topo.");
  }
  return form;
}

void show_registration(Context& context, const Form& form) {
  context.show_form(form, {"Nova categoria", "equipe", "Criar categoria", tree_trail()});
}

void ask_category(Context& context) {
  context.require_maintenance();
  Form form = category_form(context, true);
  if (const auto parent = parse_identifier(context.request().query.get("pai"))) form.fill("pai", *parent);
  show_registration(context, form);
}

void create_category(Context& context) {
  context.require_maintenance();
  Form form = category_form(context, true);
  const RecordRow tree{"item", fixed::class_company};
  const bool done = form.read(context.request().form) && attempt_whole(context.crm(), tree, form, [&] {
                      const std::int32_t parent = form.id_of("pai");
                      add_category(context.crm(), parent == 0 ? fixed::class_company : parent,
                                   to_component_text(form.text_of("nome")), context.person());
                    });
  if (!done) return show_registration(context, form);
  context.redirect("/categorias", "Categoria criada.");
}

Category read_category(Context& context) {
  context.require_maintenance();
  for (Category& category : read_categories(context.crm())) {
    if (category.id == context.id()) return std::move(category);
  }
  throw Refusal{404};
}

void show_renaming(Context& context, const Form& form) {
  context.show_form(form, {"Alterar categoria", "equipe", "Salvar alterações", tree_trail()});
}

/// The form of a category as it is stored.
Form renaming_form(Context& context, const Category& category) {
  return category_form(context, false).fill("nome", category.name).guard();
}

void ask_renaming(Context& context) {
  show_renaming(context, renaming_form(context, read_category(context)));
}

void rename_category(Context& context) {
  const Category category = read_category(context);
  Form form = renaming_form(context, category);
  const auto present = [&] { return renaming_form(context, read_category(context)); };
  const bool done =
      form.read(context.request().form) &&
      change_record(context.crm(), {"item", category.id}, form, present, [&] {
        rename_item(context.crm(), category.id, to_component_text(form.text_of("nome")), context.person());
      });
  if (!done) return show_renaming(context, form);
  context.redirect("/categorias", "Alterações salvas.");
}

}  // namespace

void add_category_pages(Router& router) {
  router.get("/empresas/{}/categorias", ask_choice);
  router.post("/empresas/{}/categorias", store_choice);
  router.get("/categorias", show_tree);
  router.get("/categorias/nova", ask_category);
  router.post("/categorias/nova", create_category);
  router.get("/categorias/{}/alterar", ask_renaming);
  router.post("/categorias/{}/alterar", rename_category);
}

}  // namespace pradelis::site
