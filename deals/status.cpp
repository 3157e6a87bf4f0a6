#include <cstdint>
#include <string>

#include "component/crm.h"
#include "component/recordsets.h"
#include "component/thread_state.h"
#include "values/clock.h"
#include "values/convert.h"
#include "values/text.h"

namespace pradelis::component {

namespace {

std::string status_of(dataaccess::Recordset& deal) {
  if (deal.Eof()) return "NEGÓCIO INEXISTENTE";
  if (deal.value("Fechamento").is_null()) return "Aberto";
  return deal.value("rmotivo").is_null() ? "Fechado" : "Perdido";
}

std::string expected_closing(const Variant& closed, const Variant& expected, const Variant& reason) {
  if (!closed.is_null()) return reason.is_null() ? "Fechado" : "Perdido";
  if (expected.is_null()) return "REGISTRO SEM DATA";
  return shared_data().DataParaTexto(to_date(expected), 0, 0);
}

/// Midnights between two dates; Null when one of them is.
Variant days_between(const Variant& from, const Variant& to) {
  if (from.is_null() || to.is_null()) return Variant::null();
  return day_number(to_date(to)) - day_number(to_date(from));
}

/// The order of the tests is the contract: a deal with a proper closing date has no age, and the texts
/// "Fechado em" and "Perdido em" are for deals that have a value or a reason but no closing date.
std::string age_of(dataaccess::Recordset& deal) {
  const Variant closing = deal.value("Fechamento");
  const Variant created = deal.value("criadoem");
  const bool proper_closing = !closing.is_null() && is_date(closing);

  if (!deal.value("valorFechamento").is_null()) {
    return proper_closing ? "" : concat("Fechado em ", days_between(created, closing), " Dias");
  }
  if (!deal.value("rmotivo").is_null()) {
    return proper_closing ? "" : concat("Perdido em ", days_between(created, closing), " Dias");
  }
  return concat(days_between(created, today()), " Dias");
}

}  // namespace

std::string CRM::Negocio_Status(std::int32_t oidNegocio) {
  return reporting("Negocio_Status", [&] {
    working_ =
        open_snapshot(concat("select Fechamento, rmotivo from crm_pos_negocio where oid=", oidNegocio));
    std::string status = status_of(*working_);
    release(working_);
    return status;
  });
}

Variant CRM::Fechamento_Previsto(const Variant& DATAFECHAMENTO, Date DATAPROVAVEL, const Variant& RMOTIVO) {
  return reporting("Fechamento_Previsto",
                   [&] { return Variant(expected_closing(DATAFECHAMENTO, DATAPROVAVEL, RMOTIVO)); });
}

std::string CRM::Diadecorrido(const Variant& oidNegocio) {
  return reporting("Diadecorrido", [&] {
    working_ = open_snapshot(
        concat("select Fechamento, ValorFechamento, rmotivo, Criadoem from crm_pos_negocio, item where "
               "item.oid=crm_pos_negocio.oid and item.oid=",
               oidNegocio));
    std::string age = age_of(*working_);
    release(working_);
    return age;
  });
}

}  // namespace pradelis::component
