#include "dataaccess/schema/fixed.h"
#include "site/context.h"
#include "site/csv.h"
#include "site/pager.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/rows.h"
#include "site/transaction.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

struct Product {
  std::int32_t id = 0;
  std::string name;
};

/// Products are shared by all teams: everybody sees them, and those who administer a group keep them.
void require_keeper(Context& context) {
  if (!context.visible().administers()) throw Refusal{404};
}

Product read_product(Context& context) {
  require_keeper(context);
  Product product;
  each_row(context.crm(), concat("select oid, nome from crm_produtos where oid = ", context.id()), 1,
           [&](const Row& row) {
             product = {row.id(0), row.text(1)};
           });
  if (product.id == 0) throw Refusal{404};
  return product;
}

std::string list_condition(Context& context) {
  const std::string search(trim(context.request().query.get("busca")));
  if (search.empty()) return " where p.oid > 0";
  return concat(" where UPPER(p.nome) like UPPER('", like_anywhere(context.crm(), search), "') escape '!'");
}

void list(Context& context) {
  const Request& request = context.request();
  Pager pager(request, {"p.nome", "p.oid", "select nome from crm_produtos where oid = "});
  const bool keeper = context.visible().administers();
  std::vector<std::pair<std::int32_t, View>> rows;
  each_row(context.crm(),
           concat("select p.oid, p.nome from crm_produtos p", list_condition(context), pager.condition(),
                  pager.ordering()),
           Pager::limit(), [&](const Row& row) {
             View view;
             view.set("name", row.text(1)).set("address", "/produtos/" + std::to_string(row.id(0)));
             rows.emplace_back(row.id(0), std::move(view.flag("keeper", keeper)));
           });
  pager.arrange(rows);
  View view;
  const std::string& search = request.query.get("busca");
  view.set("search", search).flag("filtered", !search.empty()).flag("none", rows.empty());
  view.flag("keeper", keeper);
  view.set("export", "/produtos/exportar" + (search.empty() ? "" : "?busca=" + url_encode(search)));
  if (!rows.empty()) view.section("pager", pager.view(rows.front().first, rows.back().first));
  std::vector<View> products;
  for (auto& [id, product] : rows) products.push_back(std::move(product));
  view.list("products", std::move(products));
  context.show("products", "Produtos", "negocios", std::move(view));
}

void export_list(Context& context) {
  CsvWriter csv;
  csv.text("Número").text("Produto").end_row();
  each_streamed_row(
      context.crm(),
      concat("select p.oid, p.nome from crm_produtos p", list_condition(context), " order by p.nome, p.oid"),
      [&](const Row& row) { csv.text(row.text(0)).text(row.text(1)).end_row(); });
  context.send_csv("produtos", csv.take());
}

const std::vector<Link>& product_trail() {
  static const std::vector<Link> trail = {{"/negocios", "Negócios"}, {"/produtos", "Produtos"}};
  return trail;
}

Form product_form() {
  Form form;
  form.text("nome", "Nome do produto").required();
  return form;
}

void show_registration(Context& context, const Form& form) {
  context.show_form(form, {"Novo produto", "negocios", "Cadastrar produto", product_trail()});
}

void ask_registration(Context& context) {
  require_keeper(context);
  show_registration(context, product_form());
}

void register_product(Context& context) {
  require_keeper(context);
  Form form = product_form();
  // Held meanwhile, since two registrations at the same time would compute one number.
  const RecordRow numbers{"item", dataaccess::fixed::system_object};
  const bool done = form.read(context.request().form) && attempt_whole(context.crm(), numbers, form, [&] {
                      const Variant result = context.crm().Cadastrar_Produto(form.text_of("nome"));
                      if (result.is(VariantType::Text)) form.refuse("nome", result.get<std::string>());
                    });
  if (!done) return show_registration(context, form);
  context.redirect("/produtos?busca=" + url_encode(form.text_of("nome")), "Produto cadastrado.");
}

void show_renaming(Context& context, const Form& form) {
  context.show_form(form, {"Alterar produto", "negocios", "Salvar alterações", product_trail()});
}

/// The form of a product as it is stored.
Form renaming_form(const Product& product) { return product_form().fill("nome", product.name).guard(); }

void ask_renaming(Context& context) { show_renaming(context, renaming_form(read_product(context))); }

void rename_product(Context& context) {
  const Product product = read_product(context);
  Form form = renaming_form(product);
  const auto present = [&] { return renaming_form(read_product(context)); };
  const bool done = form.read(context.request().form) &&
                    change_record(context.crm(), {"crm_produtos", product.id}, form, present,
                                  [&] { context.crm().Alterar_Produto(form.text_of("nome"), product.id); });
  if (!done) return show_renaming(context, form);
  context.redirect("/produtos?busca=" + url_encode(form.text_of("nome")), "Produto alterado.");
}

void show_deletion(Context& context, const Form& form, const Product& product) {
  const auto uses = to_int64(single_value(
      context.crm(), concat("select count(*) from crm_pos_negocio where rproduto = ", product.id)));
  std::string lead = "“" + product.name + "” sai da lista. ";
  lead += uses == 0 ? "Nenhum negócio o usa."
                    : "Fica sem produto: " + count_text(uses, "negócio que o usa.", "negócios que o usam.");
  FormPage page{"Excluir produto", "negocios", "Excluir produto", product_trail(), lead};
  page.danger = true;
  context.show_form(form, page);
}

void ask_deletion(Context& context) { show_deletion(context, Form(), read_product(context)); }

void delete_product(Context& context) {
  const Product product = read_product(context);
  Form form;
  const bool done = attempt_whole(context.crm(), {"crm_produtos", product.id}, form,
                                  [&] { context.crm().Excluir_Produto(product.id); });
  if (!done) return show_deletion(context, form, product);
  context.redirect("/produtos", "Produto excluído.");
}

}  // namespace

void add_product_pages(Router& router) {
  router.get("/produtos", list);
  router.get("/produtos/exportar", export_list);
  router.get("/produtos/novo", ask_registration);
  router.post("/produtos/novo", register_product);
  router.get("/produtos/{}/alterar", ask_renaming);
  router.post("/produtos/{}/alterar", rename_product);
  router.get("/produtos/{}/excluir", ask_deletion);
  router.post("/produtos/{}/excluir", delete_product);
}

}  // namespace pradelis::site
