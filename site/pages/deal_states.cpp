#include "site/activity_data.h"
#include "site/company_data.h"
#include "site/context.h"
#include "site/deal_data.h"
#include "site/file_data.h"
#include "site/pages/pages.h"
#include "site/reference.h"
#include "site/salesperson_data.h"
#include "site/still_deals.h"
#include "site/transaction.h"
#include "values/clock.h"
#include "values/text.h"

namespace pradelis::site {
namespace {

void show_deal(Context& context) {
  const Deal deal = read_deal(context, context.id());
  std::vector<std::pair<std::int32_t, View>> shown = {{deal.id, state_view(deal.state)}};
  mark_still(context, shown);
  View view = std::move(shown.front().second);
  view.set("page", deal_address(deal.id)).set("company", deal.company_name);
  view.set("company_page", company_address(deal.company)).set("salesperson", deal.salesperson_name);
  view.optional("contact", deal.contact_name).optional("indicator", deal.indicator_name);
  view.set("expected_value", money_text(deal.expected_value)).set("registered", deal.registered);
  view.optional("expected", deal.expected ? day_text(*deal.expected) : std::string());
  view.optional("distance", deal.expected ? distance_text(*deal.expected) : std::string());
  view.optional("closed", deal.closed ? day_text(*deal.closed) : std::string());
  view.optional("closing_value", deal.closing_value ? money_text(*deal.closing_value) : std::string());
  view.optional("loss_reason", deal.loss_reason).optional("note", deal.note);
  view.flag("open", deal.state == DealState::Open).flag("won", deal.state == DealState::Won);
  view.flag("lost", deal.state == DealState::Lost);
  view.flag("due", deal.state == DealState::Open && deal.expected &&
                       day_number(*deal.expected) < day_number(today()));
  if (deal.state == DealState::Open) view.set("age", context.crm().Diadecorrido(deal.id));
  std::vector<View> classes;
  for (const Option& one : deal.classes) classes.push_back(View().set("class", one.label));
  view.flag("classified", !classes.empty()).list("classes", std::move(classes));
  auto activities = deal_activities(context, deal.id);
  view.set("id", std::to_string(deal.id));
  view.flag("no_activities", activities.empty()).list("activities", std::move(activities));
  auto files = file_views(context, deal.id);
  view.flag("no_files", files.empty()).list("files", std::move(files));
  context.show("deal", deal.name, "negocios", std::move(view));
}

/// Only open deals are closed or lost, and only the others reopened: two visitors may have had the
/// same page before them.
void expect_state(Form& form, const Deal& deal, bool open) {
  if ((deal.state == DealState::Open) == open) return;
  form.refuse(open ? "Este negócio já não está aberto." : "Este negócio já está aberto.");
}

/// The component selects closed deals by their closing value and does not write it itself.
void write_closing_value(Context& context, std::int32_t deal, const Variant& value) {
  change_row(context.crm(), concat("select valorfechamento from crm_pos_negocio where oid = ", deal),
             [&](dataaccess::Recordset& row) { row.set("valorfechamento", value); });
}

/// Writes what ends or reopens a deal, or passes it on, while nobody else can do so.
bool change_deal(Context& context, const Deal& deal, Form& form, const std::function<Form(const Deal&)>& ask,
                 const std::function<void()>& write) {
  return change_record(
      context.crm(), {"item", deal.id}, form, [&] { return ask(read_deal(context, deal.id)); }, write);
}

Form closing_form(const Deal& deal) {
  Form form;
  form.date("data", "Data do fechamento").required().half().value(today());
  form.money("valor", "Valor fechado").required().half().money(deal.expected_value);
  return form.guard(state_text(deal.state));
}

void show_closing(Context& context, const Form& form, const Deal& deal) {
  context.show_form(form, {"Fechar negócio", "negocios", "Fechar negócio", deal_trail(deal),
                           "Negócio ganho com " + deal.company_name + "."});
}

void ask_closing(Context& context) {
  const Deal deal = read_deal(context, context.id());
  show_closing(context, closing_form(deal), deal);
}

/// Typed dates in the future are mistakes: a deal is closed or lost on a day that has come.
void check_not_in_future(Form& form) {
  const auto date = form.date_of("data");
  if (date && day_number(*date) > day_number(today())) form.refuse("data", "A data ainda não chegou.");
}

void close_deal(Context& context) {
  const Deal deal = read_deal(context, context.id());
  Form form = closing_form(deal);
  if (form.read(context.request().form)) check_not_in_future(form);
  expect_state(form, deal, true);
  const bool done = !form.refused() && change_deal(context, deal, form, closing_form, [&] {
    // The value first: a deal with a closing date alone would show in no list.
    write_closing_value(context, deal.id, form.money_of("valor", context.crm()));
    context.crm().Fechar_Negocio(*form.date_of("data"), deal.id);
  });
  if (!done) return show_closing(context, form, deal);
  context.redirect(deal_address(deal.id), "Negócio fechado.");
}

Form loss_form(Context& context, const Deal& deal) {
  Form form;
  form.date("data", "Data da perda").required().half().value(today());
  form.choice("motivo", "Motivo", entries(context.crm(), ReferenceList::LossReasons)).required().half();
  form.area("observacao", "Observação")
      .hint("Substitui a observação que o negócio tem agora.")
      .value(deal.note);
  return form.guard(state_text(deal.state) + deal.note);
}

void show_loss(Context& context, const Form& form, const Deal& deal) {
  context.show_form(form, {"Negócio perdido", "negocios", "Registrar perda", deal_trail(deal),
                           deal.name + ", com " + deal.company_name + ".", true});
}

void ask_loss(Context& context) {
  const Deal deal = read_deal(context, context.id());
  show_loss(context, loss_form(context, deal), deal);
}

void lose_deal(Context& context) {
  const Deal deal = read_deal(context, context.id());
  Form form = loss_form(context, deal);
  const auto ask = [&](const Deal& present) { return loss_form(context, present); };
  if (form.read(context.request().form)) check_not_in_future(form);
  expect_state(form, deal, true);
  const bool done = !form.refused() && change_deal(context, deal, form, ask, [&] {
    context.crm().Perder_Negocio(*form.date_of("data"), form.id_of("motivo"), form.text_of("observacao"),
                                 deal.id);
  });
  if (!done) return show_loss(context, form, deal);
  context.redirect(deal_address(deal.id), "Perda registrada.");
}

void show_reopening(Context& context, const Form& form, const Deal& deal) {
  context.show_form(
      form, {"Reabrir negócio", "negocios", "Reabrir", deal_trail(deal),
             "O negócio volta a ficar aberto; data de fechamento, valor fechado e motivo são apagados."});
}

Form reopening_form(const Deal& deal) { return Form().guard(state_text(deal.state)); }

void ask_reopening(Context& context) {
  const Deal deal = read_deal(context, context.id());
  show_reopening(context, reopening_form(deal), deal);
}

void reopen_deal(Context& context) {
  const Deal deal = read_deal(context, context.id());
  Form form = reopening_form(deal);
  form.read(context.request().form);
  expect_state(form, deal, false);
  const bool done = !form.refused() && change_deal(context, deal, form, reopening_form, [&] {
    context.crm().Estornar_Negocio(deal.id);
    if (deal.closing_value) write_closing_value(context, deal.id, Variant::null());
  });
  if (!done) return show_reopening(context, form, deal);
  context.redirect(deal_address(deal.id), "Negócio reaberto.");
}

void show_transfer(Context& context, const Form& form, const Deal& deal) {
  context.show_form(form, {"Passar a outro vendedor", "negocios", "Passar negócio", deal_trail(deal),
                           "Hoje com " + deal.salesperson_name + "."});
}

void ask_transfer(Context& context) {
  const Deal deal = read_deal(context, context.id());
  show_transfer(context, transfer_form(context, deal.salesperson), deal);
}

void transfer_deal(Context& context) {
  const Deal deal = read_deal(context, context.id());
  Form form = transfer_form(context, deal.salesperson);
  const auto ask = [&](const Deal& present) { return transfer_form(context, present.salesperson); };
  const bool done = form.read(context.request().form) && change_deal(context, deal, form, ask, [&] {
                      context.crm().Alterar_Vendedor_Negocio(form.id_of("vendedor"), deal.id);
                    });
  if (!done) return show_transfer(context, form, deal);
  context.redirect(deal_address(deal.id), "Negócio passado a outro vendedor.");
}

}  // namespace

void add_deal_state_pages(Router& router) {
  router.get("/negocios/{}", show_deal);
  router.get("/negocios/{}/fechar", ask_closing);
  router.post("/negocios/{}/fechar", close_deal);
  router.get("/negocios/{}/perder", ask_loss);
  router.post("/negocios/{}/perder", lose_deal);
  router.get("/negocios/{}/reabrir", ask_reopening);
  router.post("/negocios/{}/reabrir", reopen_deal);
  router.get("/negocios/{}/passar", ask_transfer);
  router.post("/negocios/{}/passar", transfer_deal);
}

}  // namespace pradelis::site
