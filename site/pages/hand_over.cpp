#include "site/identifiers.h"
#include "site/pages/pages.h"
#include "site/salesperson_data.h"
#include "site/transaction.h"

namespace pradelis::site {
namespace {

enum What : std::int32_t { Companies = 1, OpenDeals = 2, EndedDeals = 3 };

/// What of a salesperson's is handed over. To whom is chosen in the component's tree, or, for those who do
/// not stand in it, in the choice "fora".
Form hand_over_form(const Holdings& holdings, const SalespersonTree& tree) {
  const auto label = [](const char* what, const std::vector<std::int32_t>& ids) {
    return std::string(what) + " (" + std::to_string(ids.size()) + ")";
  };
  Form form;
  form.checks("oque", "O que passa",
              {{Companies, label("Empresas", holdings.companies)},
               {OpenDeals, label("Negócios em aberto", holdings.open_deals)},
               {EndedDeals, label("Negócios encerrados", holdings.ended_deals)}})
      .required()
      .value(std::vector<std::int32_t>{Companies, OpenDeals});
  if (!tree.apart.empty()) form.choice("fora", "Ou a quem não está na árvore", tree.apart);
  return form;
}

void show(Context& context, const Form& form, const Salesperson& person, SalespersonTree tree) {
  if (form.refused()) context.response().status = 422;
  View view = form.view();
  view.set("page", salesperson_address(person.id)).set("person", person.name);
  view.set("tree", std::move(tree.html));
  context.show("hand_over", "Passar empresas e negócios", "equipe", std::move(view));
}

void ask(Context& context) {
  const Salesperson person = read_salesperson(context, context.id());
  SalespersonTree tree = read_salesperson_tree(context);
  const Form form = hand_over_form(read_holdings(context.crm(), person.id), tree);
  show(context, form, person, std::move(tree));
}

/// Who receives; 0, with the form refused, when it is nobody to whom the visitor may give records.
std::int32_t receiver(Context& context, Form& form, const Salesperson& person) {
  const std::int32_t apart = form.has("fora") ? form.id_of("fora") : 0;
  const std::int32_t chosen =
      apart != 0 ? apart : parse_identifier(context.request().form.get("vendedor")).value_or(0);
  for (const Option& option : receivers(context)) {
    if (option.id == chosen && chosen != person.id) return chosen;
  }
  form.refuse(chosen == person.id ? "Escolha outra pessoa." : "Escolha um dos vendedores da sua equipe.");
  return 0;
}

void hand_over(Context& context) {
  component::CRM& crm = context.crm();
  const Salesperson person = read_salesperson(context, context.id());
  SalespersonTree tree = read_salesperson_tree(context);
  const Holdings holdings = read_holdings(crm, person.id);
  Form form = hand_over_form(holdings, tree);
  form.read(context.request().form);
  const std::int32_t to = receiver(context, form, person);
  const bool done = !form.refused() && attempt_whole(crm, {"item", to}, form, [&] {
    if (receiver(context, form, person) == 0) return;  // who was just deleted gets nothing
    const Holdings now = read_holdings(crm, person.id);
    for (const std::int32_t what : form.ids_of("oque")) {
      if (what == Companies) {
        for (const std::int32_t company : now.companies) crm.Alterar_Vendedor_Prospect(to, company);
      } else {
        for (const std::int32_t deal : what == OpenDeals ? now.open_deals : now.ended_deals) {
          crm.Alterar_Vendedor_Negocio(to, deal);
        }
      }
    }
  });
  if (!done) return show(context, form, person, std::move(tree));
  context.redirect(salesperson_address(person.id), "Registros passados a outro vendedor.");
}

}  // namespace

void add_hand_over_pages(Router& router) {
  router.get("/equipe/vendedores/{}/passar", ask);
  router.post("/equipe/vendedores/{}/passar", hand_over);
}

}  // namespace pradelis::site
