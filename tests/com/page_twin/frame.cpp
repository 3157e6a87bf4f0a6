#include "tests/com/page_twin/frame.h"

#include <map>
#include <stdexcept>

#include "dataaccess/recordset.h"

namespace pradelis::test {

void begin(TwinPage& page, const Visitor& visitor, const Variant& title) {
  page.common_text(5).escaped(title).common_text(6);
  if (visitor.logged_in()) page.common_text(7).escaped(visitor.element(1)).common_text(8);
  page.common_text(9).escaped(title).common_text(10);
}

void warn(TwinPage& page, const std::string& text) {
  if (!text.empty()) page.common_text(11).escaped(text).common_text(12);
}

void options(TwinPage& page, component::CRM& crm, const std::string& statement, const Variant& chosen) {
  crm.Executar2(statement);
  for (dataaccess::Recordset& rows = *crm.rs2; !rows.Eof(); rows.MoveNext()) {
    const Variant id = rows.value("oid");
    page.common_text(1).write(id).common_text(2);
    if (!chosen.is_null() && to_int32(id) == to_int32(chosen)) page.write(" selected");
    page.common_text(3).escaped(rows.value("nome")).common_text(4);
  }
}

std::int32_t identifier(const std::string& text) {
  const std::string_view digits = trim(text);
  if (digits.empty() || digits.size() > 9) return 0;
  if (digits.find_first_not_of("0123456789") != std::string_view::npos) return 0;
  return std::stoi(std::string(digits));
}

std::string identifiers(const std::string& list) {
  std::string kept;
  for (const std::string_view piece : split(list, ',')) {
    const std::int32_t number = identifier(std::string(piece));
    if (number != 0) kept += (kept.empty() ? "" : ",") + std::to_string(number);
  }
  return kept;
}

std::string money(component::CRM& crm, const Variant& value) {
  if (value.is_null()) return {};
  std::string text = to_text(value);
  return crm.converte(text);
}

void serve(TwinPage& page, Visitor& visitor) {
  using Handler = void (*)(TwinPage&, Visitor&, component::CRM&);
  static const std::map<std::string, Handler> pages = {
      {"sair.asp", serve_logout},           {"negocios.asp", serve_deals},
      {"negocio_novo.asp", serve_new_deal}, {"empresa.asp", serve_company},
      {"categorias.asp", serve_categories}, {"vendedores.asp", serve_salespeople}};
  const std::string& name = page.request().name;
  if (name == "entrar.asp") return serve_login(page, visitor);
  const auto found = pages.find(name);
  if (found == pages.end()) throw std::runtime_error("no twin of " + name);
  if (!visitor.logged_in()) return page.redirect("entrar.asp");
  const auto crm = std::make_shared<component::CRM>();
  found->second(page, visitor, *crm);
}

}  // namespace pradelis::test
